var VClass_8h =
[
    [ "VFoundation::IVInstancePool", "classVFoundation_1_1IVInstancePool.html", "classVFoundation_1_1IVInstancePool" ],
    [ "VFoundation::VClass", "classVFoundation_1_1VClass.html", "classVFoundation_1_1VClass" ]
];