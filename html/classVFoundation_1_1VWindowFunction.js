var classVFoundation_1_1VWindowFunction =
[
    [ "eType", "classVFoundation_1_1VWindowFunction.html#a97cd0981b7a147d94d39e6aea1a6e23f", [
      [ "eRectangular", "classVFoundation_1_1VWindowFunction.html#a97cd0981b7a147d94d39e6aea1a6e23fa39913688030ed4602a0866177c687e97", null ],
      [ "eHann", "classVFoundation_1_1VWindowFunction.html#a97cd0981b7a147d94d39e6aea1a6e23fa21174edb3e1adb619214ed8441ac01f6", null ],
      [ "eHamming", "classVFoundation_1_1VWindowFunction.html#a97cd0981b7a147d94d39e6aea1a6e23fafd202b411ef648c7bc0760078f8b0d82", null ],
      [ "eBlackman", "classVFoundation_1_1VWindowFunction.html#a97cd0981b7a147d94d39e6aea1a6e23faa18a00e92b21b32379761b155d13e69c", null ]
    ] ],
    [ "VWindowFunction", "classVFoundation_1_1VWindowFunction.html#ad7c08c1482cb680914badc742777b712", null ],
    [ "VWindowFunction", "classVFoundation_1_1VWindowFunction.html#a724b4ff0c19bb8df4e42fe56e2bb08ec", null ],
    [ "~VWindowFunction", "classVFoundation_1_1VWindowFunction.html#ac0ca079228c8a500d5e9af907d984e20", null ],
    [ "VWindowFunction", "classVFoundation_1_1VWindowFunction.html#a6951d3f902beab9790754c928e94262a", null ],
    [ "Apply", "classVFoundation_1_1VWindowFunction.html#aa389431a0e48dd5d35d50685bb2e1eb4", null ],
    [ "Copy", "classVFoundation_1_1VWindowFunction.html#a864e98b02031326371b41ab137dfcd0d", null ],
    [ "GetDescription", "classVFoundation_1_1VWindowFunction.html#a3a51673bbce3d9e3c6cdf9d359aeb8b1", null ],
    [ "IsEqual", "classVFoundation_1_1VWindowFunction.html#a1fbff708012f9a2be67da4d80d755cfd", null ],
    [ "New", "classVFoundation_1_1VWindowFunction.html#af1d39ef84e50cf9d7c61b78496406c93", null ],
    [ "operator=", "classVFoundation_1_1VWindowFunction.html#a5ecbb26c86e1dc076b4b9b25411797ac", null ],
    [ "Serialize", "classVFoundation_1_1VWindowFunction.html#aa248d33f3c89f521fb9a3da0578fc0fd", null ],
    [ "SerializeAsXML", "classVFoundation_1_1VWindowFunction.html#a4c3ace1efec4f053c34cd4fa31ce92a1", null ],
    [ "SetType", "classVFoundation_1_1VWindowFunction.html#ab20a3eb601104d6b7795ac68cde46546", null ],
    [ "Type", "classVFoundation_1_1VWindowFunction.html#a5729a45dd6690896db73429de9d8ec06", null ],
    [ "ValueAt", "classVFoundation_1_1VWindowFunction.html#a8dbdc2ed195527fbb33324843d7c3f24", null ],
    [ "kClassName", "classVFoundation_1_1VWindowFunction.html#acfd1bfdc9a89428a5953c16ffe55b0ee", null ],
    [ "ms_theClass", "classVFoundation_1_1VWindowFunction.html#a138706c7dfd7a520b7424b95ae7778b0", null ]
];