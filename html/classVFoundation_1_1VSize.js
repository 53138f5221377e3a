var classVFoundation_1_1VSize =
[
    [ "VSize", "classVFoundation_1_1VSize.html#ab9634c8053cfc7146f97c488bd7bce60", null ],
    [ "VSize", "classVFoundation_1_1VSize.html#a16985f6ecd2a5b6e3a1f6777e33f53d7", null ],
    [ "VSize", "classVFoundation_1_1VSize.html#aaa99156d35abada375a1be5862edcb7b", null ],
    [ "New", "classVFoundation_1_1VSize.html#af39b671e4e934f2f310a01431afb91ab", null ],
    [ "operator=", "classVFoundation_1_1VSize.html#aa53231796b5cf9d28d035ea085aee0bb", null ],
    [ "TSavedObject< VSize >", "classVFoundation_1_1VSize.html#a6ddccbc76c42fce46fbd247764cef95f", null ],
    [ "kClassName", "classVFoundation_1_1VSize.html#ad8a8741fe287c70502e9181c018afff6", null ],
    [ "ms_theClass", "classVFoundation_1_1VSize.html#aa3cbbe1b4f266c2c618879aaf3b44e4a", null ]
];