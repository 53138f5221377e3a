var VMessenger_8h =
[
    [ "VFoundation::VMessenger", "classVFoundation_1_1VMessenger.html", "classVFoundation_1_1VMessenger" ]
];