var VCommandDelayer_8h =
[
    [ "VFoundation::VCommandDelayer", "classVFoundation_1_1VCommandDelayer.html", "classVFoundation_1_1VCommandDelayer" ]
];