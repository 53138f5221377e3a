var VConnectionTuple_8h =
[
    [ "VFoundation::VConnectionTuple", "classVFoundation_1_1VConnectionTuple.html", "classVFoundation_1_1VConnectionTuple" ]
];