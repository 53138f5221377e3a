var VMessageCenterJob_8h =
[
    [ "VFoundation::VMessageCenterJob", "classVFoundation_1_1VMessageCenterJob.html", "classVFoundation_1_1VMessageCenterJob" ]
];