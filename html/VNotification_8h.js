var VNotification_8h =
[
    [ "VFoundation::VNotification", "classVFoundation_1_1VNotification.html", "classVFoundation_1_1VNotification" ]
];