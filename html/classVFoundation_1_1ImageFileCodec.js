var classVFoundation_1_1ImageFileCodec =
[
    [ "ConvertDataToImage", "classVFoundation_1_1ImageFileCodec.html#a0ec7713e1dfa60337db2040ffb8147bf", null ],
    [ "ImageFromBitmap", "classVFoundation_1_1ImageFileCodec.html#a48efe13c8fbec0af9c0b3c6367290821", null ],
    [ "LoadImageFromFile", "classVFoundation_1_1ImageFileCodec.html#a140c3693b87cc6c40b250635585bed21", null ],
    [ "LoadImageFromFile", "classVFoundation_1_1ImageFileCodec.html#a35ee344d066c4a85eb313115e35136e1", null ],
    [ "LoadResolvedFile", "classVFoundation_1_1ImageFileCodec.html#aeafd46253ee6afb3305b5872921cfc33", null ],
    [ "SaveImageToFile", "classVFoundation_1_1ImageFileCodec.html#ae8b71f70e84240cfbb58aefe9fc9d847", null ],
    [ "SupportedFileExtensions", "classVFoundation_1_1ImageFileCodec.html#ac708755165ae5f4bf1cdf92c2b0c96dd", null ],
    [ "TraceFailure", "classVFoundation_1_1ImageFileCodec.html#a79f9ef926665079266f7b1edfda6bf93", null ]
];