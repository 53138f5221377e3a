var VThread_8h =
[
    [ "VFoundation::VThread", "classVFoundation_1_1VThread.html", "classVFoundation_1_1VThread" ]
];