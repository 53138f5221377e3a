var structVFoundation_1_1SColour =
[
    [ "eStyle", "structVFoundation_1_1SColour.html#a6c1018f173c5366f0f16a79fb4543660", [
      [ "eList", "structVFoundation_1_1SColour.html#a6c1018f173c5366f0f16a79fb4543660a88b5c629439c34bd8c91aa74e9e895fa", null ],
      [ "eTagged", "structVFoundation_1_1SColour.html#a6c1018f173c5366f0f16a79fb4543660ac0d9abfdbd540b61062d0c30c404290f", null ]
    ] ],
    [ "SColour", "structVFoundation_1_1SColour.html#a878be78079593fe4161f76466cc5b512", null ],
    [ "SColour", "structVFoundation_1_1SColour.html#a22a350a50116c7a7d1bba834ae98a000", null ],
    [ "SColour", "structVFoundation_1_1SColour.html#a7dc3fb439265f2b558ef30bd9a88790b", null ],
    [ "SColour", "structVFoundation_1_1SColour.html#ad60d4b0f8c775c58b4b3dc6da1d1f93d", null ],
    [ "~SColour", "structVFoundation_1_1SColour.html#a2addf799309606485a0c0187c90decd2", null ],
    [ "GetColourAsString", "structVFoundation_1_1SColour.html#aa4e8172cb7b06c36743cc78bfe8da494", null ],
    [ "GetColourAsString", "structVFoundation_1_1SColour.html#a2ba610b7810ddda34dbc09a2d1a77f4b", null ],
    [ "iSetRGBA", "structVFoundation_1_1SColour.html#a7ed4119c287ea1bec15b17c01c2da963", null ],
    [ "IsSameColour", "structVFoundation_1_1SColour.html#a6c01b7f68f9ab88bc47b6bdd94223425", null ],
    [ "operator=", "structVFoundation_1_1SColour.html#a577159b5c00db201f5b2bd6d6f31c867", null ],
    [ "SetColourFromString", "structVFoundation_1_1SColour.html#a4482f5c738c932d6a4947f9ab8a2c150", null ],
    [ "alpha", "structVFoundation_1_1SColour.html#a047b83ee8242eba14a84cd7f5a8bea58", null ],
    [ "blue", "structVFoundation_1_1SColour.html#abf6e43ba311ab766e6e970c80196517a", null ],
    [ "blue16", "structVFoundation_1_1SColour.html#ac35c06a33525880091151b632f6a5e4b", null ],
    [ "green", "structVFoundation_1_1SColour.html#a60ee765a7a665f6200ce9ab5d05f0312", null ],
    [ "green16", "structVFoundation_1_1SColour.html#a43ffb3b80c417ffaf269dd76dbd708cd", null ],
    [ "red", "structVFoundation_1_1SColour.html#ab2ef5ab7631daad1c4881ad3e9a371e3", null ],
    [ "red16", "structVFoundation_1_1SColour.html#a71f85daa9456d8c186e0a8cd72c9b8ae", null ]
];