var dir_0b3c568f7b38230c9611e60e6f3a2da6 =
[
    [ "IImageIO.h", "IImageIO_8h.html", "IImageIO_8h" ],
    [ "ImageFileCodec.h", "ImageFileCodec_8h.html", "ImageFileCodec_8h" ],
    [ "VBitmapContext.h", "VBitmapContext_8h.html", "VBitmapContext_8h" ],
    [ "VBitmapImage.h", "VBitmapImage_8h.html", "VBitmapImage_8h" ],
    [ "VImage.h", "VImage_8h.html", "VImage_8h" ],
    [ "VImageIOJPEG.h", "VImageIOJPEG_8h.html", "VImageIOJPEG_8h" ],
    [ "VImageIOPNG.h", "VImageIOPNG_8h.html", "VImageIOPNG_8h" ],
    [ "VImageIOTarga.h", "VImageIOTarga_8h.html", "VImageIOTarga_8h" ]
];