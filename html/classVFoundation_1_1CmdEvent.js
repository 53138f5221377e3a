var classVFoundation_1_1CmdEvent =
[
    [ "CmdEvent", "classVFoundation_1_1CmdEvent.html#a3e788234e4a54ace7ae02f1dda708f1b", null ],
    [ "CmdEvent", "classVFoundation_1_1CmdEvent.html#ad3275c320c7a18e5db8cdfbc1b8ef1f7", null ],
    [ "~CmdEvent", "classVFoundation_1_1CmdEvent.html#aedd3137f31677abe55a69302eb8a5cd8", null ],
    [ "CommandID", "classVFoundation_1_1CmdEvent.html#aafc1b608bec5a8cfc1faee1aca8f4e13", null ],
    [ "Listener", "classVFoundation_1_1CmdEvent.html#a8b3ca5aa31d4a33b46ca0254db378ccb", null ],
    [ "operator=", "classVFoundation_1_1CmdEvent.html#ab668e56378365eccdeb11b9dfb1c20bb", null ],
    [ "SetCommandID", "classVFoundation_1_1CmdEvent.html#a7325f9b7e45f82be177a9070bb4fd0ba", null ],
    [ "SetListener", "classVFoundation_1_1CmdEvent.html#ae05b91821bbe1ac6f547f89ae5f77b07", null ],
    [ "Value", "classVFoundation_1_1CmdEvent.html#ad0e9ced806918ebfbad76dacf29c0340", null ],
    [ "Value", "classVFoundation_1_1CmdEvent.html#a72c74124de4462017cee7e177513da8c", null ],
    [ "kNoCommandID", "classVFoundation_1_1CmdEvent.html#a9c821cb59066a42f9b763cbf12f004c7", null ]
];