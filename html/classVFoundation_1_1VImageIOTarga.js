var classVFoundation_1_1VImageIOTarga =
[
    [ "Saving", "classVFoundation_1_1VImageIOTarga.html#a051ee6b49a066a9060f3a1c9d32e480c", [
      [ "kInPlace", "classVFoundation_1_1VImageIOTarga.html#a051ee6b49a066a9060f3a1c9d32e480ca1d63af61d3d549bac224294313be875d", null ],
      [ "kReplacing", "classVFoundation_1_1VImageIOTarga.html#a051ee6b49a066a9060f3a1c9d32e480ca5a9eff08ca1f4b0c5c7efb5f8b041d8f", null ]
    ] ],
    [ "VImageIOTarga", "classVFoundation_1_1VImageIOTarga.html#a1d66493b812c2e63aa8673e85dec12fa", null ],
    [ "ConvertDataToImage", "classVFoundation_1_1VImageIOTarga.html#a9a42d05e46801bc90adbf793d8c4b071", null ],
    [ "CreateARGBBitmapContext", "classVFoundation_1_1VImageIOTarga.html#a07ae367e3a3d9840b381379bf009283b", null ],
    [ "LoadResolvedFile", "classVFoundation_1_1VImageIOTarga.html#ab7422378f923aa2a9c139e5e5a12bcbd", null ],
    [ "ReleaseImageData", "classVFoundation_1_1VImageIOTarga.html#a846513158835944cbeffa2f80187e759", null ],
    [ "SaveImageFromPixelData", "classVFoundation_1_1VImageIOTarga.html#a9fc48d49ae69562d58c3950aeee2894e", null ],
    [ "SaveImageToFile", "classVFoundation_1_1VImageIOTarga.html#aa90f8881aca63419becfa4c1291d6abd", null ],
    [ "SupportedFileExtensions", "classVFoundation_1_1VImageIOTarga.html#a2365aaecf446e74f5de3a1c0aa7b8ef3", null ],
    [ "kMaxSide", "classVFoundation_1_1VImageIOTarga.html#a659549560b599fc15c98e2e5d4921b2f", null ],
    [ "kMinFileSize", "classVFoundation_1_1VImageIOTarga.html#ae7c463484d8630af6eddb421cb595d68", null ]
];