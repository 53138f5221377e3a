var classVFoundation_1_1VRange =
[
    [ "VRange", "classVFoundation_1_1VRange.html#ae6c2ecbe1fa710a7e3831c71ad8bc268", null ],
    [ "VRange", "classVFoundation_1_1VRange.html#a9cc8c5496ce0cab19a28cdd0311ebdab", null ],
    [ "VRange", "classVFoundation_1_1VRange.html#a5279b5a5f3dcc41bdd96b2f0e0d65a44", null ],
    [ "VRange", "classVFoundation_1_1VRange.html#a7c55c13ce0f0694aba56ce516131f13b", null ],
    [ "Contains", "classVFoundation_1_1VRange.html#acbc5b817e729e67dc3c618185b1f2dff", null ],
    [ "End", "classVFoundation_1_1VRange.html#aec85a08fd46c3bc3168ad150e44fdb78", null ],
    [ "Intersection", "classVFoundation_1_1VRange.html#a5c45e581bc1b869d8954264a995ef6fd", null ],
    [ "IsEmpty", "classVFoundation_1_1VRange.html#af6870607795467690d241b365443ca13", null ],
    [ "Length", "classVFoundation_1_1VRange.html#a9a99e117d39eb2f40248024dca412045", null ],
    [ "Location", "classVFoundation_1_1VRange.html#ac3e284be40e7a41a5c57e4605b2aa4a8", null ],
    [ "MembersLoaded", "classVFoundation_1_1VRange.html#a60cd546d78ec1de2c003591a487323ce", null ],
    [ "New", "classVFoundation_1_1VRange.html#aae7480cc30f04ac86ff951777343afd9", null ],
    [ "operator=", "classVFoundation_1_1VRange.html#a61d858e164e85f084681a824ca25024c", null ],
    [ "operator==", "classVFoundation_1_1VRange.html#a4728bd36a6baa3488839760172ff8d05", null ],
    [ "Set", "classVFoundation_1_1VRange.html#afb2016de96436aa5c1c732eb9a85f815", null ],
    [ "Union", "classVFoundation_1_1VRange.html#a510b0b54ee8c6f9372521c2c0759746b", null ],
    [ "TSavedObject< VRange >", "classVFoundation_1_1VRange.html#ace9a92043adcbda40f355580cfbbe346", null ],
    [ "kClassName", "classVFoundation_1_1VRange.html#a038001489e8059438d1aab180d7e2c93", null ],
    [ "ms_theClass", "classVFoundation_1_1VRange.html#ac364cd3c058db6d23750f84244b63893", null ]
];