var ICmdListener_8h =
[
    [ "VFoundation::ICmdListener", "classVFoundation_1_1ICmdListener.html", "classVFoundation_1_1ICmdListener" ]
];