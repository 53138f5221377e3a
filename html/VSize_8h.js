var VSize_8h =
[
    [ "VFoundation::VSize", "classVFoundation_1_1VSize.html", "classVFoundation_1_1VSize" ]
];