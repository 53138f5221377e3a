var classVFoundation_1_1VPoint =
[
    [ "VPoint", "classVFoundation_1_1VPoint.html#a043bfafdaf82a45aa933e53760c0e459", null ],
    [ "VPoint", "classVFoundation_1_1VPoint.html#ab8e2ad019ff0b07472f1f5213d16da6e", null ],
    [ "VPoint", "classVFoundation_1_1VPoint.html#ac78786f0169e6abf245cb4eea4e33e78", null ],
    [ "InitializeClass", "classVFoundation_1_1VPoint.html#a9a5c88e9f394323799fde096f137676e", null ],
    [ "New", "classVFoundation_1_1VPoint.html#a28b91eea0de92edda87028f9c04ee358", null ],
    [ "operator=", "classVFoundation_1_1VPoint.html#a9c81c4090d4108cd58cc217db9113329", null ],
    [ "UninitializeClass", "classVFoundation_1_1VPoint.html#a7578726ca513d322dba9825cfb7a93e4", null ],
    [ "TSavedObject< VPoint >", "classVFoundation_1_1VPoint.html#ab79b8336a6e6d79d19c6aaf773d04004", null ],
    [ "kClassName", "classVFoundation_1_1VPoint.html#a1810830a482c4c90a381c6ef65e6446a", null ],
    [ "ms_theClass", "classVFoundation_1_1VPoint.html#ac57e22d6bd3a0eab8292d4000c1e4a5e", null ]
];