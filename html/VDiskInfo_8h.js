var VDiskInfo_8h =
[
    [ "VFoundation::VDiskInfo", "classVFoundation_1_1VDiskInfo.html", "classVFoundation_1_1VDiskInfo" ]
];