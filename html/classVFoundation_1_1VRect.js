var classVFoundation_1_1VRect =
[
    [ "VRect", "classVFoundation_1_1VRect.html#aee1271e362657529235944ee330537ba", null ],
    [ "VRect", "classVFoundation_1_1VRect.html#a7a7ca68f901ac76de351f164dce2afdd", null ],
    [ "VRect", "classVFoundation_1_1VRect.html#ad9745dcc464e79e0a1b18027fdf1763d", null ],
    [ "InitializeClass", "classVFoundation_1_1VRect.html#adcdc0addd9dc2ab4e2a96318b8db9f9a", null ],
    [ "New", "classVFoundation_1_1VRect.html#a5b09fdce4e0beb25f67169d2e9bd153e", null ],
    [ "operator=", "classVFoundation_1_1VRect.html#a79c81b90740cfe665e4fd75e1b3b15cf", null ],
    [ "UninitializeClass", "classVFoundation_1_1VRect.html#a008954c3c488be5f58f0d3d416ebf1be", null ],
    [ "TSavedObject< VRect >", "classVFoundation_1_1VRect.html#abf0d81cafb9f4383828c19959e331cf0", null ],
    [ "kClassName", "classVFoundation_1_1VRect.html#a2f00af0f94af6fe646a2cc5eb611624d", null ],
    [ "ms_theClass", "classVFoundation_1_1VRect.html#a9abc334b7f2ae52ee56f2f5f77b508c1", null ]
];