var SPoint_8h =
[
    [ "VFoundation::SPoint", "structVFoundation_1_1SPoint.html", "structVFoundation_1_1SPoint" ]
];