var VFileInfo_8h =
[
    [ "VFoundation::VFileInfo", "classVFoundation_1_1VFileInfo.html", "classVFoundation_1_1VFileInfo" ]
];