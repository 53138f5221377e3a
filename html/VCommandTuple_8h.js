var VCommandTuple_8h =
[
    [ "VFoundation::VCommandTuple", "classVFoundation_1_1VCommandTuple.html", "classVFoundation_1_1VCommandTuple" ]
];