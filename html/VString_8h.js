var VString_8h =
[
    [ "VFoundation::VString", "classVFoundation_1_1VString.html", "classVFoundation_1_1VString" ],
    [ "sizet2long", "VString_8h.html#a467273c450ae4ce13b8a438c70cf8854", null ],
    [ "sizet2ulong", "VString_8h.html#a1232512579cc3750140fbb9d99b2f6a1", null ],
    [ "sizet2ushort", "VString_8h.html#a0e9c6145d1962b04e3374839118ae06a", null ]
];