var classVFoundation_1_1VArchive =
[
    [ "VArchive", "classVFoundation_1_1VArchive.html#a0e3524b8551300e6b128ec77664e8469", null ],
    [ "VArchive", "classVFoundation_1_1VArchive.html#acf20f5c294829ebe063a21e9364ad5fe", null ],
    [ "Data", "classVFoundation_1_1VArchive.html#a43e6908f32d898ff7c1bdb05a158bfee", null ],
    [ "Data", "classVFoundation_1_1VArchive.html#ad49f1efaf349d17aa9e6b33ba5a77437", null ],
    [ "Infos", "classVFoundation_1_1VArchive.html#a8b8ec9ae2add388dd834a255073838ed", null ],
    [ "Infos", "classVFoundation_1_1VArchive.html#ac4f95eabe38aaa50106bae5177f5dcf4", null ],
    [ "New", "classVFoundation_1_1VArchive.html#ac1c68c20d9a8fdb91dd66d3b032d67d5", null ],
    [ "operator=", "classVFoundation_1_1VArchive.html#a536473d3546e9d4fe135df42416e52c8", null ],
    [ "Serialize", "classVFoundation_1_1VArchive.html#aee3af9e8e06783a87e9673b60c8c3e61", null ],
    [ "kClassName", "classVFoundation_1_1VArchive.html#ad031fc5ca6d66567408734a895c708ad", null ],
    [ "ms_theClass", "classVFoundation_1_1VArchive.html#a1bfd3a5b86bcc15235c2480e96cb80e9", null ]
];