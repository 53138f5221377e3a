var TInterval_8h =
[
    [ "VFoundation::TInterval< Number >", "structVFoundation_1_1TInterval.html", "structVFoundation_1_1TInterval" ]
];