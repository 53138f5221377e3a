var classVFoundation_1_1VStringTokenizer =
[
    [ "VStringTokenizer", "classVFoundation_1_1VStringTokenizer.html#ac299907cf4dba78a24dd44000c06f04e", null ],
    [ "VStringTokenizer", "classVFoundation_1_1VStringTokenizer.html#ab059b8596b15f89cc5d2f5413a715649", null ],
    [ "VStringTokenizer", "classVFoundation_1_1VStringTokenizer.html#a62eafbdbdbac2b2a541616d447136d23", null ],
    [ "GetNextToken", "classVFoundation_1_1VStringTokenizer.html#a00bf746dd26232169332336d049f93a4", null ],
    [ "GetNextToken", "classVFoundation_1_1VStringTokenizer.html#a551fdf6afc807334f006330f1438f6c2", null ],
    [ "GetNumberOfTokens", "classVFoundation_1_1VStringTokenizer.html#ad53d48a14b2883ee12dd67b9b6f31cfb", null ],
    [ "HasMoreTokens", "classVFoundation_1_1VStringTokenizer.html#a8586b675f665c11a5dbf594ebf976b5f", null ],
    [ "LastCount", "classVFoundation_1_1VStringTokenizer.html#a385c882b1f65a8bd274a794c4b82c2d7", null ],
    [ "New", "classVFoundation_1_1VStringTokenizer.html#abeda3e4ac52fa971f8cd4547eccd1b30", null ],
    [ "operator=", "classVFoundation_1_1VStringTokenizer.html#a884d52b10fb763348368d36218b582bd", null ],
    [ "SetQuoteCharacter", "classVFoundation_1_1VStringTokenizer.html#a29a27cfbc54903d8ebacae8b68be0c9b", null ],
    [ "SetQuoteCharacters", "classVFoundation_1_1VStringTokenizer.html#abbce411e38d15ae2c0332089367515e5", null ],
    [ "SetStringToTokenize", "classVFoundation_1_1VStringTokenizer.html#aec0b0b4178cb25eaa36d5054e071365b", null ],
    [ "SetStringToTokenize", "classVFoundation_1_1VStringTokenizer.html#a34923a08c9efc9bd166942ac24e8d51a", null ],
    [ "SetTokenizationCharacter", "classVFoundation_1_1VStringTokenizer.html#ab18430f5ebf931317781e80a29219207", null ],
    [ "SetTokenizationCharacters", "classVFoundation_1_1VStringTokenizer.html#a1d3a1fe093158af48e59f4c43f1f6678", null ],
    [ "kClassName", "classVFoundation_1_1VStringTokenizer.html#a56e6988194519a05ee9363a15281a8e0", null ],
    [ "ms_theClass", "classVFoundation_1_1VStringTokenizer.html#af1ffa8d337dba624eedd90c0aeb7ffb8", null ]
];