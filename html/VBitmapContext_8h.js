var VBitmapContext_8h =
[
    [ "VFoundation::VBitmapContext", "classVFoundation_1_1VBitmapContext.html", "classVFoundation_1_1VBitmapContext" ]
];