var VWindowFunction_8h =
[
    [ "VFoundation::VWindowFunction", "classVFoundation_1_1VWindowFunction.html", "classVFoundation_1_1VWindowFunction" ]
];