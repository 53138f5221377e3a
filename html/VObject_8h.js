var VObject_8h =
[
    [ "VFoundation::VObject", "classVFoundation_1_1VObject.html", "classVFoundation_1_1VObject" ]
];