var classVFoundation_1_1VFloatVectorMapXY =
[
    [ "VFloatVectorMapXY", "classVFoundation_1_1VFloatVectorMapXY.html#aec098fb3991affcb5573833eba99cfaa", null ],
    [ "VFloatVectorMapXY", "classVFoundation_1_1VFloatVectorMapXY.html#a3a8da0d55804f702d04b3fffe0a81e42", null ],
    [ "~VFloatVectorMapXY", "classVFoundation_1_1VFloatVectorMapXY.html#ac0fec7197a51ad62f3e75f05fa6d1d97", null ],
    [ "AddPoint", "classVFoundation_1_1VFloatVectorMapXY.html#a4ec5deb1907f43124d31e7f956e7eb33", null ],
    [ "Apply", "classVFoundation_1_1VFloatVectorMapXY.html#af06e67ea84fcfd5675ea6c0b94979fdf", null ],
    [ "Copy", "classVFoundation_1_1VFloatVectorMapXY.html#aec8fe19d5e7a0686f4d06383c7c8830c", null ],
    [ "Count", "classVFoundation_1_1VFloatVectorMapXY.html#ad0d26134d3fa5ed45b3f7cf3c1370645", null ],
    [ "GetDescription", "classVFoundation_1_1VFloatVectorMapXY.html#a0015ce0e7476b4c2cf25cb7d7f440379", null ],
    [ "IsEqual", "classVFoundation_1_1VFloatVectorMapXY.html#aa07389e1782c3985363e97babc65cc29", null ],
    [ "New", "classVFoundation_1_1VFloatVectorMapXY.html#ac93c60ba71f58143ced3965f1cd730a8", null ],
    [ "operator=", "classVFoundation_1_1VFloatVectorMapXY.html#a309730e20d758b3ecc85286990213dd5", null ],
    [ "RemoveAllPoints", "classVFoundation_1_1VFloatVectorMapXY.html#a301cdd7bb6456367b1b68ae672ab7545", null ],
    [ "Serialize", "classVFoundation_1_1VFloatVectorMapXY.html#a3f5c3d2403ff45844bea5097d094defb", null ],
    [ "SerializeAsXML", "classVFoundation_1_1VFloatVectorMapXY.html#a8b53434ef9a783989daa0298b4181e4d", null ],
    [ "SetPoints", "classVFoundation_1_1VFloatVectorMapXY.html#ad23f9a0c5c5f11741ba7412f952510ce", null ],
    [ "ValueAt", "classVFoundation_1_1VFloatVectorMapXY.html#a9aebdd469639843aded245ee441063e3", null ],
    [ "X", "classVFoundation_1_1VFloatVectorMapXY.html#a18d7d4ee0e8ce3000b6db5b1c4dee103", null ],
    [ "Y", "classVFoundation_1_1VFloatVectorMapXY.html#a1182f6dae741d2c6ce5e8dbd2528f13d", null ],
    [ "kClassName", "classVFoundation_1_1VFloatVectorMapXY.html#adb3bf182582fefb6de629e2c921ebc9f", null ],
    [ "ms_theClass", "classVFoundation_1_1VFloatVectorMapXY.html#ac17b05d5997f0da034dbb186b94cb490", null ]
];