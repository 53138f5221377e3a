var classVFoundation_1_1VBitmapContext =
[
    [ "VBitmapContext", "classVFoundation_1_1VBitmapContext.html#ad4d23849dc84d2ed9e7d83bb26e81341", null ],
    [ "~VBitmapContext", "classVFoundation_1_1VBitmapContext.html#abf50f99273baedf56cfe290da03fdf96", null ],
    [ "Create", "classVFoundation_1_1VBitmapContext.html#a138a08d0448b89920972db370759a34c", null ],
    [ "DrawImage", "classVFoundation_1_1VBitmapContext.html#ad34f08bd4f960802edaab36ecbea8447", null ],
    [ "Height", "classVFoundation_1_1VBitmapContext.html#af73a65f255343638e56b2dea6e2d16fa", null ],
    [ "operator=", "classVFoundation_1_1VBitmapContext.html#a06f961a7c86076d0b76119d90822aa8a", null ],
    [ "Row", "classVFoundation_1_1VBitmapContext.html#a8399616d9f36b713466395f1237a165d", null ],
    [ "SetFlipped", "classVFoundation_1_1VBitmapContext.html#a5efc2d878e9e33568ce2e3f96191284d", null ],
    [ "Width", "classVFoundation_1_1VBitmapContext.html#a080feef406543c83df02805cdee49eba", null ]
];