var VNotificationTuple_8h =
[
    [ "VFoundation::VNotificationTuple", "classVFoundation_1_1VNotificationTuple.html", "classVFoundation_1_1VNotificationTuple" ]
];