var classVFoundation_1_1VLog_1_1VLogContext =
[
    [ "VLogContext", "classVFoundation_1_1VLog_1_1VLogContext.html#a0176105b08558cfb72bfb507a2482939", null ],
    [ "VLogContext", "classVFoundation_1_1VLog_1_1VLogContext.html#a4f88d393e342e99753c2e2905a73b9c8", null ],
    [ "~VLogContext", "classVFoundation_1_1VLog_1_1VLogContext.html#ac102559249c9c695c12b3711b95cd5c6", null ],
    [ "VLogContext", "classVFoundation_1_1VLog_1_1VLogContext.html#afb3bd7d0748b6245ba369e92dd08d76b", null ],
    [ "GetElapsedTime", "classVFoundation_1_1VLog_1_1VLogContext.html#a488ebc7b911b0fe4b6b7569fa5804c49", null ],
    [ "New", "classVFoundation_1_1VLog_1_1VLogContext.html#a9d1937f593989341592f9af812837e3e", null ],
    [ "operator=", "classVFoundation_1_1VLog_1_1VLogContext.html#a3e87c53de7a9ce3b4d980928f555d84e", null ],
    [ "VLog", "classVFoundation_1_1VLog_1_1VLogContext.html#a19beadc82e9574c887c2ee080a5d9f1d", null ],
    [ "kClassName", "classVFoundation_1_1VLog_1_1VLogContext.html#aa54053ff3e9bc0226000533f3a57f6b5", null ],
    [ "ms_theClass", "classVFoundation_1_1VLog_1_1VLogContext.html#a5c8ddd7957f91c0939617079886e661b", null ]
];