var classVFoundation_1_1IVInstancePool =
[
    [ "~IVInstancePool", "classVFoundation_1_1IVInstancePool.html#ab29e4b000015ebe5b290c98db2df7ec7", null ],
    [ "InitializeClass", "classVFoundation_1_1IVInstancePool.html#a8a5e8b63bde781e8b14fb5b4210fc81c", null ],
    [ "MaxPoolSize", "classVFoundation_1_1IVInstancePool.html#a186be2b1e54df965e30c800649a05403", null ],
    [ "NewInstance", "classVFoundation_1_1IVInstancePool.html#a3cbe82ebcd5624a3446d2345ca19a929", null ],
    [ "PoolSize", "classVFoundation_1_1IVInstancePool.html#a1a387d777545ca57a8554be9032d3f62", null ],
    [ "UninitializeClass", "classVFoundation_1_1IVInstancePool.html#a5cc279b0134a659383f47bc3850fd9c4", null ]
];