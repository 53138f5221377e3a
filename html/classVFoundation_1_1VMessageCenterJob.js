var classVFoundation_1_1VMessageCenterJob =
[
    [ "VMessageCenterJob", "classVFoundation_1_1VMessageCenterJob.html#ae130066f81a71790d1b48ecc9b3509d7", null ],
    [ "VMessageCenterJob", "classVFoundation_1_1VMessageCenterJob.html#a4c48d906a60ee0ffa9e5216fa3b6c7d9", null ],
    [ "~VMessageCenterJob", "classVFoundation_1_1VMessageCenterJob.html#a93d56892007f49779071850f06196427", null ],
    [ "AbortJob", "classVFoundation_1_1VMessageCenterJob.html#a4229389c859bad0cd46c74d640ca981b", null ],
    [ "DoJob", "classVFoundation_1_1VMessageCenterJob.html#ad254828f1774791337d34b38e524fec6", null ],
    [ "EndInChild", "classVFoundation_1_1VMessageCenterJob.html#ab783b5ed326fc7b751d6dd637cbf1052", null ],
    [ "InitializeClass", "classVFoundation_1_1VMessageCenterJob.html#af6ff7d91df0b7b4a8a418399ca61a0f0", null ],
    [ "IsOnThisThread", "classVFoundation_1_1VMessageCenterJob.html#a16bef6cc07a30da0a92a393830dd9cfb", null ],
    [ "JobProgress", "classVFoundation_1_1VMessageCenterJob.html#a6f9db645abadb09b0056eb2f487a17e3", null ],
    [ "New", "classVFoundation_1_1VMessageCenterJob.html#ad0e159f63979b78ca39ca3523332fdf3", null ],
    [ "operator=", "classVFoundation_1_1VMessageCenterJob.html#aaa4bc80a9b6f4bb9acd0adf8ae8c6a5f", null ],
    [ "UninitializeClass", "classVFoundation_1_1VMessageCenterJob.html#a241eb59bd81e5c60270c2791fce2b355", null ],
    [ "kClassName", "classVFoundation_1_1VMessageCenterJob.html#a6ff7f80c0faea9abc36fed80b12d3f5f", null ],
    [ "ms_theClass", "classVFoundation_1_1VMessageCenterJob.html#a8f2c29a1280fee18b3a1ce0323e5f3f5", null ]
];