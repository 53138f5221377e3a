var VFileManager_8h =
[
    [ "VFoundation::VFileManager", "classVFoundation_1_1VFileManager.html", "classVFoundation_1_1VFileManager" ]
];