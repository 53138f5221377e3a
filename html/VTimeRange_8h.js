var VTimeRange_8h =
[
    [ "VFoundation::VTimeRange", "classVFoundation_1_1VTimeRange.html", "classVFoundation_1_1VTimeRange" ]
];