var classVFoundation_1_1VValue =
[
    [ "TypeName", "structVFoundation_1_1VValue_1_1TypeName.html", "structVFoundation_1_1VValue_1_1TypeName" ],
    [ "VValue", "classVFoundation_1_1VValue.html#ad190a3a3b32a9c0fc2bb5281f8fcfc4a", null ],
    [ "VValue", "classVFoundation_1_1VValue.html#a7fb79a93c1c9318b782a07e69ee96cf6", null ],
    [ "VValue", "classVFoundation_1_1VValue.html#afd632b9d7dfc279bc71b176321b2a24c", null ],
    [ "~VValue", "classVFoundation_1_1VValue.html#a8e0c3d613301fbb4b4cde88f7e6be1a6", null ],
    [ "Copy", "classVFoundation_1_1VValue.html#a46c80e888cc12a135aa7fa5bf85b8134", null ],
    [ "IsEqual", "classVFoundation_1_1VValue.html#a99b3f77eeff19203ae0f6d3babdd31e4", null ],
    [ "New", "classVFoundation_1_1VValue.html#a5b3f8c85c8d98332f29abb713fcf234b", null ],
    [ "operator=", "classVFoundation_1_1VValue.html#ad9632a15e7dee9bf8e8cfe9d1f97379a", null ],
    [ "operator=", "classVFoundation_1_1VValue.html#a050ae6b94d6b5950013ccf2ad22b45e8", null ],
    [ "Serialize", "classVFoundation_1_1VValue.html#ac15ece01cdae7b9d3afc336e277e150e", null ],
    [ "SerializeAsXML", "classVFoundation_1_1VValue.html#a9bb544964356a0039afc54b3fd89aa90", null ],
    [ "Value", "classVFoundation_1_1VValue.html#accf0aae04986a8198d65edd34fa39362", null ],
    [ "Value", "classVFoundation_1_1VValue.html#af5e5f6c0d12224dcc65f74207ed25db2", null ],
    [ "kClassName", "classVFoundation_1_1VValue.html#a54d4e8f16583e13fec0e9ad8d5fd9940", null ],
    [ "kTypeCount", "classVFoundation_1_1VValue.html#a26175d7b18404a53196d35a87b850be6", null ],
    [ "ms_theClass", "classVFoundation_1_1VValue.html#a3db90c26b134993c41f662ce436c1df2", null ],
    [ "ms_typeNameMap", "classVFoundation_1_1VValue.html#a3cbd43892283ec3c57029a26cb924772", null ]
];