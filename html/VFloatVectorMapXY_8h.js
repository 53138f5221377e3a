var VFloatVectorMapXY_8h =
[
    [ "VFoundation::VFloatVectorMapXY", "classVFoundation_1_1VFloatVectorMapXY.html", "classVFoundation_1_1VFloatVectorMapXY" ]
];