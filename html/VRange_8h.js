var VRange_8h =
[
    [ "VFoundation::VRange", "classVFoundation_1_1VRange.html", "classVFoundation_1_1VRange" ]
];