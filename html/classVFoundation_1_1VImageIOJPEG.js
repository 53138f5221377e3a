var classVFoundation_1_1VImageIOJPEG =
[
    [ "LoadResolvedFile", "classVFoundation_1_1VImageIOJPEG.html#a08543e7c3310a7ad518ef98dca95b37c", null ],
    [ "kMaxPixels", "classVFoundation_1_1VImageIOJPEG.html#aaef5b5ffbac7900fc6db6e5291b11faa", null ],
    [ "kMaxPixelsPerByte", "classVFoundation_1_1VImageIOJPEG.html#a98cc8f1654c895c1226e558f74c731d3", null ],
    [ "kMaxScanPixels", "classVFoundation_1_1VImageIOJPEG.html#a5f161bffb19a7afe2eaf71ed89cd1a2f", null ],
    [ "kMaxScans", "classVFoundation_1_1VImageIOJPEG.html#a3b106538a5191362e6fbc1a7e13e9ade", null ],
    [ "kMaxSide", "classVFoundation_1_1VImageIOJPEG.html#ae98b734278d7bc124d3b1af2b3ee7def", null ],
    [ "kMaxUnbackedPixels", "classVFoundation_1_1VImageIOJPEG.html#a921cf0521256ca8569501c580b925908", null ]
];