var VFloatVector_8h =
[
    [ "VFoundation::VFloatVector", "classVFoundation_1_1VFloatVector.html", "classVFoundation_1_1VFloatVector" ]
];