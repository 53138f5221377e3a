var VJob_8h =
[
    [ "VFoundation::VJob", "classVFoundation_1_1VJob.html", "classVFoundation_1_1VJob" ]
];