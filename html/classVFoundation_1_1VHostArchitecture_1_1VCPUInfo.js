var classVFoundation_1_1VHostArchitecture_1_1VCPUInfo =
[
    [ "VCPUInfo", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html#a5e03e3781bfcaa2a60ee554ef4e005cd", null ],
    [ "InitializeClass", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html#a7e163272a89e380c970dbd8a01769eea", null ],
    [ "ms_bHasFPU", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html#a093df3fbcdfdedf0fab13327a4745552", null ],
    [ "ms_bHasHyperThreading", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html#acd23b867c734f74ecaf50041cb57a9d7", null ],
    [ "ms_bHasMMX", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html#a666a87cf4b134d3b97b7967b2ea2ace8", null ],
    [ "ms_bHasSSE", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html#a28d4cc88761cfdd5abf15af628e4c7ab", null ],
    [ "ms_bHasSSE2", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html#ac38dd2190affc5a1aa10435f56f71312", null ],
    [ "ms_bHasSSE3", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html#a71c4e86ff338c5ef0129bb4b9276d673", null ]
];