var classVFoundation_1_1VThread =
[
    [ "Body", "classVFoundation_1_1VThread.html#a206b71ca984956d2715a64c4bfc36f90", null ],
    [ "ThreadID", "classVFoundation_1_1VThread.html#a0e93b2cfc9d52a214713a8d4cf8a585e", null ],
    [ "ePriority", "classVFoundation_1_1VThread.html#a675d67dd4151197d90c8198d38bcdfc3", [
      [ "eLow", "classVFoundation_1_1VThread.html#a675d67dd4151197d90c8198d38bcdfc3aa8572510ccf441827b71fc0db94efa74", null ],
      [ "eNormal", "classVFoundation_1_1VThread.html#a675d67dd4151197d90c8198d38bcdfc3ac686286a3fd4eafbcde3ab5621542389", null ],
      [ "eHigh", "classVFoundation_1_1VThread.html#a675d67dd4151197d90c8198d38bcdfc3aba82c98f19417e2f5ab5f7ce8696460e", null ]
    ] ],
    [ "VThread", "classVFoundation_1_1VThread.html#ab4eb4d7584f3a88daeb0880689d5610d", null ],
    [ "VThread", "classVFoundation_1_1VThread.html#afcb3978a2bfb0ef1708fcffdffa693b1", null ],
    [ "~VThread", "classVFoundation_1_1VThread.html#a58c566af9da82f8b230ca5b71d9ba53d", null ],
    [ "CaughtEndOfThread", "classVFoundation_1_1VThread.html#a9a5680351ddeee379776112aad6f74a7", null ],
    [ "EndThread", "classVFoundation_1_1VThread.html#a13df1f87cb37414ee521f7b972e3a975", null ],
    [ "GetCurrentThreadID", "classVFoundation_1_1VThread.html#ad1a44ad93af25a02b8a233da8c0d224c", null ],
    [ "HasThread", "classVFoundation_1_1VThread.html#ae189febf4847bad9862a617b46b672bc", null ],
    [ "ID", "classVFoundation_1_1VThread.html#a592b1f96abb9e1859419b6782f4910dc", null ],
    [ "InitializeClass", "classVFoundation_1_1VThread.html#a7da59261a862fb8813796525a036d7f3", null ],
    [ "New", "classVFoundation_1_1VThread.html#aafeab3756713f967e6ca7a5cc41abb67", null ],
    [ "Object", "classVFoundation_1_1VThread.html#afe7eb87a5aac168c2e7f5fb9e527ae14", null ],
    [ "operator=", "classVFoundation_1_1VThread.html#ab7c1624a1b45b084a3642e022c96b062", null ],
    [ "Priority", "classVFoundation_1_1VThread.html#a246f7d754935bd9ec9c925b86ed2b844", null ],
    [ "RegisterThread", "classVFoundation_1_1VThread.html#abffa600938ada5df9c4cf8c7fbf22f15", null ],
    [ "SetObject", "classVFoundation_1_1VThread.html#a1030410bdfc3e3df2151bdcb1d4ff3fb", null ],
    [ "SetPriority", "classVFoundation_1_1VThread.html#a3f77abd11476a80f2bb39b66539aa0e7", null ],
    [ "Sleep", "classVFoundation_1_1VThread.html#a10b06fc8e3a68e29b2fd2dcc632fcc9d", null ],
    [ "StartThread", "classVFoundation_1_1VThread.html#ab870f4466bd06879e6222e6a0666777c", null ],
    [ "UninitializeClass", "classVFoundation_1_1VThread.html#aa2371ce520171ad08bbe2e0a429bb2c0", null ],
    [ "UnregisterThread", "classVFoundation_1_1VThread.html#ad378e331a266e7326f5f3673201c7535", null ],
    [ "kClassName", "classVFoundation_1_1VThread.html#ac1499b3cb34f48ac4dd95408eb5abbae", null ],
    [ "ms_theClass", "classVFoundation_1_1VThread.html#aa37becfadf0fc1194ec3fb50140fae53", null ],
    [ "ms_threads", "classVFoundation_1_1VThread.html#a5e2bd4c240b4ae980ecfd00d26661c9e", null ]
];