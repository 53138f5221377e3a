var VBitString_8h =
[
    [ "VFoundation::VBitString", "classVFoundation_1_1VBitString.html", "classVFoundation_1_1VBitString" ]
];