var classVFoundation_1_1IImageIO =
[
    [ "~IImageIO", "classVFoundation_1_1IImageIO.html#ac1aed608b162c069565bff12e89aaa10", null ],
    [ "ConvertDataToImage", "classVFoundation_1_1IImageIO.html#a2e44ddb2f227f5df5e83648f050ea7ac", null ],
    [ "LoadImageFromFile", "classVFoundation_1_1IImageIO.html#a7a0cb7e3896c58425411414f6c7edd88", null ],
    [ "LoadImageFromFile", "classVFoundation_1_1IImageIO.html#a9702b07d485db62a1c5d6579b2f67ea2", null ],
    [ "SaveImageToFile", "classVFoundation_1_1IImageIO.html#a1f918586e2cbe5b87405644ad31b3ae2", null ],
    [ "SupportedFileExtensions", "classVFoundation_1_1IImageIO.html#ac6e662573c3e1e65de3153a5b1a95f4b", null ]
];