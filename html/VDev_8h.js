var VDev_8h =
[
    [ "VFoundation::VDev", "classVFoundation_1_1VDev.html", "classVFoundation_1_1VDev" ]
];