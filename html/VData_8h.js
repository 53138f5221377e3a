var VData_8h =
[
    [ "VFoundation::VData", "classVFoundation_1_1VData.html", "classVFoundation_1_1VData" ]
];