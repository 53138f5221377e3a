var structVFoundation_1_1SSize =
[
    [ "operator==", "structVFoundation_1_1SSize.html#a2d43a0599ac9695b67ff97a9f7d8c530", null ],
    [ "SizeFromString", "structVFoundation_1_1SSize.html#a1bbd8d273ba6a2d595ba734fe1188fd4", null ],
    [ "SizeToString", "structVFoundation_1_1SSize.html#a8d4fe2b52919095f2896d16a6ef9cf78", null ],
    [ "height", "structVFoundation_1_1SSize.html#adfaccdb51afab6c9d2dd9134bd7fe264", null ],
    [ "width", "structVFoundation_1_1SSize.html#a16768c68fb00a71527185a6e26525214", null ]
];