var classVFoundation_1_1ChunkScope =
[
    [ "ChunkScope", "classVFoundation_1_1ChunkScope.html#af70b5aa61a5c7d4a9be712561f425d6c", null ],
    [ "ChunkScope", "classVFoundation_1_1ChunkScope.html#a97adc9f3394f5fbda3288495833bfbed", null ],
    [ "ChunkScope", "classVFoundation_1_1ChunkScope.html#a2dc2c9f6d730fd54d6ede3035661499c", null ],
    [ "ChunkScope", "classVFoundation_1_1ChunkScope.html#ab7251c6337a8be5bf9af7bf0c54fe21f", null ],
    [ "~ChunkScope", "classVFoundation_1_1ChunkScope.html#a0f5235424ce76872f50f4269e93e774d", null ],
    [ "Close", "classVFoundation_1_1ChunkScope.html#a2c72f1686859ab89ec93f323ba3c29f3", null ],
    [ "Id", "classVFoundation_1_1ChunkScope.html#a12f5fd546d2185bbdaa460621e6f137b", null ],
    [ "IsOpen", "classVFoundation_1_1ChunkScope.html#a8feed09fc9676a8119fd7a7fe9d112c9", null ],
    [ "operator=", "classVFoundation_1_1ChunkScope.html#a919b89ab737e1832bb2f29318c7a64a2", null ]
];