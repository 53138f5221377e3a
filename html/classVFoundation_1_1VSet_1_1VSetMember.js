var classVFoundation_1_1VSet_1_1VSetMember =
[
    [ "VSetMember", "classVFoundation_1_1VSet_1_1VSetMember.html#aaeaef9177d063a20b42b2586a65d92ba", null ],
    [ "VSetMember", "classVFoundation_1_1VSet_1_1VSetMember.html#a5d9aef3f02c53a7d59c9d543629a245d", null ],
    [ "~VSetMember", "classVFoundation_1_1VSet_1_1VSetMember.html#a1cd11d019809dbdaf15f9c3a418ac826", null ],
    [ "New", "classVFoundation_1_1VSet_1_1VSetMember.html#ac5b909ead7aaeea0d0835a034ca0c397", null ],
    [ "operator=", "classVFoundation_1_1VSet_1_1VSetMember.html#a2d08932cad1fab3fa46d6d980a092528", null ],
    [ "kClassName", "classVFoundation_1_1VSet_1_1VSetMember.html#aacebf1cf1e411a6bc8b856e44aa75e25", null ],
    [ "ms_theClass", "classVFoundation_1_1VSet_1_1VSetMember.html#a36e3ed0f0bfb11caf51edf0b97c523c2", null ]
];