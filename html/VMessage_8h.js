var VMessage_8h =
[
    [ "VFoundation::VMessage", "classVFoundation_1_1VMessage.html", "classVFoundation_1_1VMessage" ]
];