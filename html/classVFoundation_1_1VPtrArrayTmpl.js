var classVFoundation_1_1VPtrArrayTmpl =
[
    [ "VPtrArrayTmpl", "classVFoundation_1_1VPtrArrayTmpl.html#a8fed2f2fc41d1bcb05946dcf2c652d74", null ],
    [ "AddPtr", "classVFoundation_1_1VPtrArrayTmpl.html#a1568ef401179246faf9424623919d5e4", null ],
    [ "IsPtrInArray", "classVFoundation_1_1VPtrArrayTmpl.html#adfaa77cf0acf9b621ad5aedbf291a1a5", null ],
    [ "PtrAtIndex", "classVFoundation_1_1VPtrArrayTmpl.html#a11e3092ffa4c26fc4ccea1fe8be718ef", null ],
    [ "RemovePtr", "classVFoundation_1_1VPtrArrayTmpl.html#a67d6d9a36eeea93b491cc4c1cd77968d", null ]
];