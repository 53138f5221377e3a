var classVFoundation_1_1VURL =
[
    [ "VURL", "classVFoundation_1_1VURL.html#a6787ceaa2bd33383dc7502fc506c42c5", null ],
    [ "VURL", "classVFoundation_1_1VURL.html#ae846f7cdc3d6fd3a746a0164a62030bf", null ],
    [ "VURL", "classVFoundation_1_1VURL.html#abb69a9405ac5c5aa8a80cb0eb1e06da9", null ],
    [ "VURL", "classVFoundation_1_1VURL.html#acc1fb76fd16d29084498b841bc3ce99e", null ],
    [ "Host", "classVFoundation_1_1VURL.html#a54cb0e15a3a976de0b2156f93affdae0", null ],
    [ "IsValid", "classVFoundation_1_1VURL.html#acb3f066526d8d446b638fd25e2f6ac85", null ],
    [ "New", "classVFoundation_1_1VURL.html#a1df588bff94999e2637985c55040789e", null ],
    [ "operator=", "classVFoundation_1_1VURL.html#a5cbe44745530717613b2fc2bc1853e10", null ],
    [ "operator==", "classVFoundation_1_1VURL.html#afc1f18e621ec368ec796669b557eded5", null ],
    [ "Path", "classVFoundation_1_1VURL.html#ab72de8d485e024c607fcc200e58cbb59", null ],
    [ "Port", "classVFoundation_1_1VURL.html#a1da28b9f2e79610c5dd2e3e8ba423c2f", null ],
    [ "Query", "classVFoundation_1_1VURL.html#a64a55c6c832da4f2a51cd13edeff0465", null ],
    [ "Scheme", "classVFoundation_1_1VURL.html#a0e1a49a2ce5d0f8d9a8a08a2dd8a1360", null ],
    [ "SetText", "classVFoundation_1_1VURL.html#a10e6319d57584f79873f9e210a1ab616", null ],
    [ "Text", "classVFoundation_1_1VURL.html#a7c8fbf83658943eaa1941daec6204003", null ],
    [ "TSavedObject< VURL >", "classVFoundation_1_1VURL.html#a959a355a5c54005d944c53fd5c7b8a71", null ],
    [ "kClassName", "classVFoundation_1_1VURL.html#a9328cae8f1390234338291a13638c96e", null ],
    [ "ms_theClass", "classVFoundation_1_1VURL.html#ada165f77da7319d973e095aa316ff9a2", null ]
];