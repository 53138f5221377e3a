var VBitmapImage_8h =
[
    [ "VFoundation::VBitmapImage", "classVFoundation_1_1VBitmapImage.html", "classVFoundation_1_1VBitmapImage" ],
    [ "CGImage", "VBitmapImage_8h.html#a75eed4580d21299bfc07dac096d41137", null ]
];