var structVFoundation_1_1SRect =
[
    [ "operator==", "structVFoundation_1_1SRect.html#a26ab759578ca475cf619c9133ee8b943", null ],
    [ "RectFromString", "structVFoundation_1_1SRect.html#a8b51c5e93649468dd29c2c2c0bcaf358", null ],
    [ "RectToString", "structVFoundation_1_1SRect.html#a3de6a9156c2574649fad476d00fca8a7", null ],
    [ "bottom", "structVFoundation_1_1SRect.html#abd19463b1712b6ffc323a5e347f0bf0d", null ],
    [ "left", "structVFoundation_1_1SRect.html#a0d5a2335b20d42f7d3e88ebc3b9811e9", null ],
    [ "right", "structVFoundation_1_1SRect.html#a65a2ebd605a2cf6323d09f628fb1baa4", null ],
    [ "top", "structVFoundation_1_1SRect.html#a2a1397edc865767778a1f3d0f48a5df0", null ]
];