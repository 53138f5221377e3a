var classVFoundation_1_1VAtomicOp =
[
    [ "VAtomicOp", "classVFoundation_1_1VAtomicOp.html#ae3164f7d1d49aca14be4956e4a678992", null ],
    [ "AddToCount", "classVFoundation_1_1VAtomicOp.html#a447411639d9cefc9693fad4429019b20", null ],
    [ "AtomicCompareAndSwapPtr", "classVFoundation_1_1VAtomicOp.html#a8d658cf7d136dead17e53eec90981cd2", null ],
    [ "AtomicCompareAndSwapPtr", "classVFoundation_1_1VAtomicOp.html#a371a20b1c76622407c416f7594b871be", null ],
    [ "AtomicDecrement32", "classVFoundation_1_1VAtomicOp.html#a4a206d9c3a0cc63ac70e0c96faa423a3", null ],
    [ "AtomicDecrement32", "classVFoundation_1_1VAtomicOp.html#adef56eb4ae6076b921eba4e03852c6fc", null ],
    [ "AtomicIncrement32", "classVFoundation_1_1VAtomicOp.html#aa0ce10ad9f87dff72f05413a3b0bb029", null ],
    [ "AtomicIncrement32", "classVFoundation_1_1VAtomicOp.html#aee04e43301156794dfae0e6ff99602b6", null ],
    [ "CompareAndSwap", "classVFoundation_1_1VAtomicOp.html#a3d837b3952d38deca0c07d556f17adba", null ]
];