var classVFoundation_1_1VJobServerPool =
[
    [ "VJobServerPool", "classVFoundation_1_1VJobServerPool.html#a9ad8508399ebfadedd18db4065db1a04", null ],
    [ "VJobServerPool", "classVFoundation_1_1VJobServerPool.html#a6bcaf7f512bce771f8a0c3b804788585", null ],
    [ "operator=", "classVFoundation_1_1VJobServerPool.html#a00890273440b104c145fe4e7d859d971", null ],
    [ "kClassName", "classVFoundation_1_1VJobServerPool.html#adbd785f15f0e00f4a883c40f81550b4b", null ],
    [ "kIsAbstract", "classVFoundation_1_1VJobServerPool.html#a69d4e5282d8e6e59d5a782e79e5a95db", null ],
    [ "ms_theClass", "classVFoundation_1_1VJobServerPool.html#a68a5481fdfc76186e6f345b7338676cf", null ]
];