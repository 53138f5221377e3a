var classVFoundation_1_1VObjectUndoStack =
[
    [ "VObjectUndoStack", "classVFoundation_1_1VObjectUndoStack.html#a3c6d30eefef47e244eb5b681d6f55b72", null ],
    [ "Array", "classVFoundation_1_1VObjectUndoStack.html#aa6804d2c2378a84da33b720db2a6a466", null ],
    [ "Array", "classVFoundation_1_1VObjectUndoStack.html#a4d1ca973303854d6fb7e3d3e50abcc77", null ],
    [ "New", "classVFoundation_1_1VObjectUndoStack.html#aeb28b7ae2ae526892aabd70e7801cb07", null ],
    [ "operator=", "classVFoundation_1_1VObjectUndoStack.html#a9e397dac8bc63420e01a3c29c1588d42", null ],
    [ "kClassName", "classVFoundation_1_1VObjectUndoStack.html#a59bdb16fe303a94eeeb4ad3844cbdcd3", null ],
    [ "m_nUndoPosition", "classVFoundation_1_1VObjectUndoStack.html#a7f7cbb3baff3bfcda60e3625dee88d14", null ],
    [ "ms_theClass", "classVFoundation_1_1VObjectUndoStack.html#ad062225bbde03d5b49f178170236ee62", null ]
];