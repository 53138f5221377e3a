var VException_8h =
[
    [ "VFoundation::VException", "classVFoundation_1_1VException.html", "classVFoundation_1_1VException" ],
    [ "VFoundation::VExceptionManager", "classVFoundation_1_1VExceptionManager.html", "classVFoundation_1_1VExceptionManager" ]
];