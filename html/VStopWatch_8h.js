var VStopWatch_8h =
[
    [ "VFoundation::VStopWatch", "classVFoundation_1_1VStopWatch.html", "classVFoundation_1_1VStopWatch" ]
];