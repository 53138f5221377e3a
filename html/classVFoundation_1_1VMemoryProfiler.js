var classVFoundation_1_1VMemoryProfiler =
[
    [ "VMemoryProfiler", "classVFoundation_1_1VMemoryProfiler.html#aa5abae9908928117937ef785d63078d1", null ],
    [ "~VMemoryProfiler", "classVFoundation_1_1VMemoryProfiler.html#a7d3fe6ebb7e8e85c91398586a9a3b7c4", null ],
    [ "DefaultProfiler", "classVFoundation_1_1VMemoryProfiler.html#a6317c857c839650aa069ff6ce0d1a36a", null ],
    [ "DestroyMemoryUseMap", "classVFoundation_1_1VMemoryProfiler.html#a150ccf23b96beb7aaaad8d225063eafa", null ],
    [ "HasMemoryUseMap", "classVFoundation_1_1VMemoryProfiler.html#ad59bba9a9847d53178b8f9e652a27795", null ],
    [ "InitializeClass", "classVFoundation_1_1VMemoryProfiler.html#a60e6b8dd740d6084729835e13648a8be", null ],
    [ "New", "classVFoundation_1_1VMemoryProfiler.html#ac4093f1f9508ba058573f34afd3eacb0", null ],
    [ "UninitializeClass", "classVFoundation_1_1VMemoryProfiler.html#a4e0b85da907eaa2cc2194bfca435532b", null ],
    [ "kClassName", "classVFoundation_1_1VMemoryProfiler.html#a2d6c2e31a0382f22e88b8f93175fced5", null ],
    [ "ms_bIsShuttingDown", "classVFoundation_1_1VMemoryProfiler.html#a5645d7bd5f6876ff4eed969aaf1df58f", null ],
    [ "ms_theClass", "classVFoundation_1_1VMemoryProfiler.html#af20daee19767a39f768b7c05cf32a91a", null ],
    [ "ms_theProfiler", "classVFoundation_1_1VMemoryProfiler.html#ad441ebdb9f851e9e644234ff1d731764", null ]
];