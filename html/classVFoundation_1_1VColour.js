var classVFoundation_1_1VColour =
[
    [ "eNamed", "classVFoundation_1_1VColour.html#acdb60b5a2bc257862d5d068f52bba0ac", [
      [ "VFOUNDATION_NAMED_COLOURS", "classVFoundation_1_1VColour.html#acdb60b5a2bc257862d5d068f52bba0acabb33d601fafd03924e42cc6ba5921793", null ]
    ] ],
    [ "VColour", "classVFoundation_1_1VColour.html#a402b3c356c30a0eac9e4260f9df376a6", null ],
    [ "VColour", "classVFoundation_1_1VColour.html#a608879bd74cc2f92b4f33f91dafaecd2", null ],
    [ "VColour", "classVFoundation_1_1VColour.html#a95a899383d2c01eb26a07986a8d94e12", null ],
    [ "VColour", "classVFoundation_1_1VColour.html#a3e58f2218fab91eb76e11d5f0a83e811", null ],
    [ "~VColour", "classVFoundation_1_1VColour.html#a07c0d8a139e0cfada2921bc455b03822", null ],
    [ "Copy", "classVFoundation_1_1VColour.html#ae07111acfd06f22617a4632c17e97100", null ],
    [ "GetColourNamed", "classVFoundation_1_1VColour.html#a0ba44bd4cde44fd9e5f4906bbd580b10", null ],
    [ "GetName", "classVFoundation_1_1VColour.html#ac7ab4a249b0c86b97064a6466d0ccc22", null ],
    [ "InitAllNamedColours", "classVFoundation_1_1VColour.html#a522d2f894374f41eb0e2f766c713170d", null ],
    [ "InitializeClass", "classVFoundation_1_1VColour.html#a69ec2a970f4dce96ffea9451814bf50f", null ],
    [ "IsEqual", "classVFoundation_1_1VColour.html#a7b738383661dca4f1aea9d03003fd57f", null ],
    [ "Named", "classVFoundation_1_1VColour.html#aec1f3f0163b368c5b063eb61702bffe0", null ],
    [ "New", "classVFoundation_1_1VColour.html#a0ea18b862e8ef4529f7d9cb0d3e106ed", null ],
    [ "operator=", "classVFoundation_1_1VColour.html#a6ef78e6a3f37879b2ad3b1a872114152", null ],
    [ "ReleaseAllStaticColours", "classVFoundation_1_1VColour.html#ab70088b69a4ca11633179551784b6d9c", null ],
    [ "SerializeAsXML", "classVFoundation_1_1VColour.html#a42230e05f42c7f350d481f96da7969bd", null ],
    [ "SetName", "classVFoundation_1_1VColour.html#a4fbdb4a12082abdd4efa34d3286cd0d9", null ],
    [ "UninitializeClass", "classVFoundation_1_1VColour.html#a5e84302dd6b29c352316d002625dca96", null ],
    [ "kClassName", "classVFoundation_1_1VColour.html#aade47c6047aa5ac20df084dd592952be", null ],
    [ "ms_namedColours", "classVFoundation_1_1VColour.html#aa7e127685821a9dd7960ad9b2c64579b", null ],
    [ "ms_namedColoursArray", "classVFoundation_1_1VColour.html#aa02ac52b7877e59074a43c401e003362", null ],
    [ "ms_pchAlphaTag", "classVFoundation_1_1VColour.html#a2ac30aa1050f0a33d83923950e7163f2", null ],
    [ "ms_pchBlueTag", "classVFoundation_1_1VColour.html#a192f33012a3634e197da0ac7a079e51f", null ],
    [ "ms_pchGreenTag", "classVFoundation_1_1VColour.html#ae94ded04673d532d76e3dc932dad168d", null ],
    [ "ms_pchRedTag", "classVFoundation_1_1VColour.html#a26d65c44fcae55a94986f11769ec091f", null ],
    [ "ms_theClass", "classVFoundation_1_1VColour.html#a37b6a23734ac4d75690e0561ce7529d2", null ]
];