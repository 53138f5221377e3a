var SValue_8h =
[
    [ "VFoundation::SValue", "structVFoundation_1_1SValue.html", "structVFoundation_1_1SValue" ]
];