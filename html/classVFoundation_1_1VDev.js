var classVFoundation_1_1VDev =
[
    [ "VDev", "classVFoundation_1_1VDev.html#a237f2b1f312e6b9e5f243bad8626b312", null ],
    [ "InitializeClass", "classVFoundation_1_1VDev.html#a38e38e48bc8252f2a3f82ac616ba5cd4", null ],
    [ "New", "classVFoundation_1_1VDev.html#abe305e5f92bb90dbb793d16161444db8", null ],
    [ "UninitializeClass", "classVFoundation_1_1VDev.html#a5030db82a29bfef5cb0cf6eb0e0d0ace", null ],
    [ "kClassName", "classVFoundation_1_1VDev.html#a144e818e0c2f58363b94ed8c2bb3de7e", null ],
    [ "ms_theClass", "classVFoundation_1_1VDev.html#abb352db40c3b6242ce40b3c726b0cdec", null ]
];