var VMemoryProfiler_8h =
[
    [ "VFoundation::VMemoryProfiler", "classVFoundation_1_1VMemoryProfiler.html", "classVFoundation_1_1VMemoryProfiler" ]
];