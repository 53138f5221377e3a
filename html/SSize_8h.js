var SSize_8h =
[
    [ "VFoundation::SSize", "structVFoundation_1_1SSize.html", "structVFoundation_1_1SSize" ]
];