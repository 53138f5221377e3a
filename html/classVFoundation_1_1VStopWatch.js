var classVFoundation_1_1VStopWatch =
[
    [ "VStopWatch", "classVFoundation_1_1VStopWatch.html#ab91b9784c0ef11f8d04339af1bcdee51", null ],
    [ "VStopWatch", "classVFoundation_1_1VStopWatch.html#a4f8a93240d839443c1515cb680c707a6", null ],
    [ "~VStopWatch", "classVFoundation_1_1VStopWatch.html#a9e9681bde07fd942d4f7f0929010a6bf", null ],
    [ "VStopWatch", "classVFoundation_1_1VStopWatch.html#a03bc7299a877319e8038b9045d5808ef", null ],
    [ "GetElapsedTime", "classVFoundation_1_1VStopWatch.html#aad268e459050b561a68c24f3fb3a123e", null ],
    [ "InitializeClass", "classVFoundation_1_1VStopWatch.html#a8dce8277980310cb15558c9ea1f6e99c", null ],
    [ "IsRunning", "classVFoundation_1_1VStopWatch.html#adf7f24309f00fb7030b870390619cbb7", null ],
    [ "New", "classVFoundation_1_1VStopWatch.html#a73fa2f615d92d37de24fcea12e99fa00", null ],
    [ "operator=", "classVFoundation_1_1VStopWatch.html#a657c75af4c2f82d6fac2ad30e738dc8d", null ],
    [ "StartTimer", "classVFoundation_1_1VStopWatch.html#a2afe04bd40129bae4dcac3df873db703", null ],
    [ "UninitializeClass", "classVFoundation_1_1VStopWatch.html#a12b3df5bbec6d7380a603a37a988de2e", null ],
    [ "kClassName", "classVFoundation_1_1VStopWatch.html#aac66e5344e8d1974d4fc5e4a4e4a52fc", null ],
    [ "ms_theClass", "classVFoundation_1_1VStopWatch.html#a2bf441889d3eeecadaab05194fdf71f5", null ]
];