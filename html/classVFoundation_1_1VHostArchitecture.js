var classVFoundation_1_1VHostArchitecture =
[
    [ "VCPUInfo", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo" ],
    [ "VHostArchitecture", "classVFoundation_1_1VHostArchitecture.html#a0ce028a6c700e90474aa4ca3fa61135e", null ],
    [ "IsHostBigEndian", "classVFoundation_1_1VHostArchitecture.html#aad0bfe7671aeda5d562387084ebcdeef", null ],
    [ "Swap2Bytes", "classVFoundation_1_1VHostArchitecture.html#a84617fac3b5c7a282e4d65b036679e7c", null ],
    [ "Swap4Bytes", "classVFoundation_1_1VHostArchitecture.html#a3a5bc0b55ef16350da7b068681376085", null ],
    [ "UserName", "classVFoundation_1_1VHostArchitecture.html#ab9734d43b683fb380b235942a8021fb6", null ],
    [ "ms_bIsHostBigEndian", "classVFoundation_1_1VHostArchitecture.html#a306447c7293b9161cb8de3315d647f6f", null ]
];