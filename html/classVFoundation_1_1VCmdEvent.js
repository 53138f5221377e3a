var classVFoundation_1_1VCmdEvent =
[
    [ "VCmdEvent", "classVFoundation_1_1VCmdEvent.html#a02852ff17a6f1e5eca753ea3acbbdc5b", null ],
    [ "~VCmdEvent", "classVFoundation_1_1VCmdEvent.html#a1a87c1f71fc7caac771924884abbf51a", null ],
    [ "Attachment", "classVFoundation_1_1VCmdEvent.html#a0e5a54ef93ab0d1bbe5be4a56657f905", null ],
    [ "Command", "classVFoundation_1_1VCmdEvent.html#a6ea3480df02a466c20a3bc4f4469097b", null ],
    [ "Command", "classVFoundation_1_1VCmdEvent.html#a80a6bae75a68865d31293aea7d8d7eca", null ],
    [ "InitializeClass", "classVFoundation_1_1VCmdEvent.html#a4b4f6eb661e9f961010765b063bc31c9", null ],
    [ "New", "classVFoundation_1_1VCmdEvent.html#a9e329601bb27c6db28396e0fac5b01d8", null ],
    [ "SetAttachment", "classVFoundation_1_1VCmdEvent.html#a4aa97c75ad3ff8511d352b8e8fed6a72", null ],
    [ "UninitializeClass", "classVFoundation_1_1VCmdEvent.html#a493e3256b006dc748e9816bf3f2d834e", null ],
    [ "kClassName", "classVFoundation_1_1VCmdEvent.html#a08fe920d389ec4d2619858dd0f86b42a", null ],
    [ "ms_theClass", "classVFoundation_1_1VCmdEvent.html#a18341acc9627b6ffddf7db0ef073d720", null ]
];