var classVFoundation_1_1VCriticalSection =
[
    [ "VCriticalSection", "classVFoundation_1_1VCriticalSection.html#a85fa685290c0d5bd333a878c29e83172", null ],
    [ "VCriticalSection", "classVFoundation_1_1VCriticalSection.html#afff33e0a60618b2b27e9ce48b03c8a24", null ],
    [ "~VCriticalSection", "classVFoundation_1_1VCriticalSection.html#a36d5222281fe42311c7ba7580ec78c81", null ],
    [ "EnterCriticalSection", "classVFoundation_1_1VCriticalSection.html#ab6c3ac9863197366039daeee106c921e", null ],
    [ "LeaveCriticalSection", "classVFoundation_1_1VCriticalSection.html#aad864d6ff74bbef6955bea001ce91080", null ],
    [ "New", "classVFoundation_1_1VCriticalSection.html#a39319d37494485750c7e1fc2c6dee2fe", null ],
    [ "operator=", "classVFoundation_1_1VCriticalSection.html#a5a588e534bea5f7b06768fd4d9d9790f", null ],
    [ "TryCriticalSection", "classVFoundation_1_1VCriticalSection.html#a2b3e2ab68791ca30da6215df0869c944", null ],
    [ "kClassName", "classVFoundation_1_1VCriticalSection.html#a130d3c483b979407579a06c86231a1b3", null ],
    [ "ms_theClass", "classVFoundation_1_1VCriticalSection.html#a024195632aa9c5cdb93462962425f787", null ]
];