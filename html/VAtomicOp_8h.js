var VAtomicOp_8h =
[
    [ "VFoundation::VAtomicOp", "classVFoundation_1_1VAtomicOp.html", "classVFoundation_1_1VAtomicOp" ]
];