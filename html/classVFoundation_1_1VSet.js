var classVFoundation_1_1VSet =
[
    [ "VSetMember", "classVFoundation_1_1VSet_1_1VSetMember.html", "classVFoundation_1_1VSet_1_1VSetMember" ],
    [ "VSet", "classVFoundation_1_1VSet.html#ae19a57fd08edfa134762e3fd9c4c085b", null ],
    [ "VSet", "classVFoundation_1_1VSet.html#a6ebc55f5e7d21af8a35d4cbfb939225c", null ],
    [ "~VSet", "classVFoundation_1_1VSet.html#a011feb22bbf59514c4bc0840e15717a1", null ],
    [ "New", "classVFoundation_1_1VSet.html#af350ae6183d060ee101c1c82118cbd40", null ],
    [ "operator=", "classVFoundation_1_1VSet.html#a6ecea865672f0e3cae5842803cfdd6d1", null ],
    [ "kClassName", "classVFoundation_1_1VSet.html#a9d8e8af35f7184207fe465d875c5631b", null ],
    [ "ms_theClass", "classVFoundation_1_1VSet.html#a0ceb7bf82b9443d795507e46ba2ef889", null ]
];