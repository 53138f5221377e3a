var VNotificationCenter_8h =
[
    [ "VFoundation::VNotificationCenter", "classVFoundation_1_1VNotificationCenter.html", "classVFoundation_1_1VNotificationCenter" ]
];