var classVFoundation_1_1VImageIOPNG =
[
    [ "LoadResolvedFile", "classVFoundation_1_1VImageIOPNG.html#a88b1bc2e5bd08b5cd2662befb50e0ff9", null ],
    [ "kMaxChunks", "classVFoundation_1_1VImageIOPNG.html#a516d4b1b7dfc296cb7abffa57911b833", null ],
    [ "kMaxChunkSize", "classVFoundation_1_1VImageIOPNG.html#ae375093baee3a2216c568470230b9f22", null ],
    [ "kMaxPixels", "classVFoundation_1_1VImageIOPNG.html#a9591ee396ef332fe801b8858424861fd", null ],
    [ "kMaxSide", "classVFoundation_1_1VImageIOPNG.html#ae6c1836b88bac4d3755a67fb65c19847", null ]
];