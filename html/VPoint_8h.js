var VPoint_8h =
[
    [ "VFoundation::VPoint", "classVFoundation_1_1VPoint.html", "classVFoundation_1_1VPoint" ]
];