var classVFoundation_1_1VHashTable =
[
    [ "VHashTable", "classVFoundation_1_1VHashTable.html#ad22c24cc4658f367a15c02b6fd8494d8", null ],
    [ "VHashTable", "classVFoundation_1_1VHashTable.html#afa77f4ef4649609bb0d1fc595510698a", null ],
    [ "~VHashTable", "classVFoundation_1_1VHashTable.html#a3978ac915bb539d3ba87442d5b655576", null ],
    [ "New", "classVFoundation_1_1VHashTable.html#a381fbd6b2562d9da1186d886d4aed677", null ],
    [ "operator=", "classVFoundation_1_1VHashTable.html#aab44b3f30196fa3196c4c80d98196dad", null ],
    [ "kClassName", "classVFoundation_1_1VHashTable.html#a9f3611270aa3ce22a73aced6116cfb36", null ],
    [ "ms_theClass", "classVFoundation_1_1VHashTable.html#a2c28b4dde5eb6c272ecc28608cad2b44", null ]
];