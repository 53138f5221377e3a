var INotification_8h =
[
    [ "VFoundation::INotification", "classVFoundation_1_1INotification.html", "classVFoundation_1_1INotification" ]
];