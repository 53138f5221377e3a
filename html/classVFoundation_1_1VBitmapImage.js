var classVFoundation_1_1VBitmapImage =
[
    [ "ReleaseCallback", "classVFoundation_1_1VBitmapImage.html#aad97598209d44060581d1e2a1840895a", null ],
    [ "VBitmapImage", "classVFoundation_1_1VBitmapImage.html#acd8a1c7a5a58664ace69928317a81296", null ],
    [ "~VBitmapImage", "classVFoundation_1_1VBitmapImage.html#afabaf3f3693e567143581b6af8f2a76c", null ],
    [ "BytesPerRow", "classVFoundation_1_1VBitmapImage.html#a9b76f2964d0640f7cc9b8ac16c26bd76", null ],
    [ "Create", "classVFoundation_1_1VBitmapImage.html#ae595a88311fc4d99783cfb2d4a37445a", null ],
    [ "Height", "classVFoundation_1_1VBitmapImage.html#ab150a0ef29313b90ddd069ac8f61674a", null ],
    [ "operator=", "classVFoundation_1_1VBitmapImage.html#a9f0bd4571163d11c35f4b512729cd73d", null ],
    [ "Row", "classVFoundation_1_1VBitmapImage.html#af87d9e179febc2461921bff87ec29e0a", null ],
    [ "Width", "classVFoundation_1_1VBitmapImage.html#a0237d19d09cd8462da265295b7137dfc", null ],
    [ "kBytesPerPixel", "classVFoundation_1_1VBitmapImage.html#a495de86daf400bf4935ae30f4f6312df", null ],
    [ "kClassName", "classVFoundation_1_1VBitmapImage.html#a968d0399a587d52ec5b4ea38e0c5dc9e", null ],
    [ "kIsAbstract", "classVFoundation_1_1VBitmapImage.html#a23c1bebeabbe84c433ca92f4c6be352c", null ],
    [ "ms_theClass", "classVFoundation_1_1VBitmapImage.html#a793c531c95b8c04e814b3734a961bffa", null ]
];