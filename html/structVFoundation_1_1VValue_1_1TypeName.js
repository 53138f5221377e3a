var structVFoundation_1_1VValue_1_1TypeName =
[
    [ "name", "structVFoundation_1_1VValue_1_1TypeName.html#a2d9560c38653cfbbe09d9d9a7344f4e7", null ],
    [ "type", "structVFoundation_1_1VValue_1_1TypeName.html#a9ed231f6a9c48ed6b67fb6811f002548", null ]
];