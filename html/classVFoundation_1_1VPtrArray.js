var classVFoundation_1_1VPtrArray =
[
    [ "VPtrArray", "classVFoundation_1_1VPtrArray.html#a9442efbd252aa2152726cebb8976152d", null ],
    [ "~VPtrArray", "classVFoundation_1_1VPtrArray.html#a012b2059b2e31d69c34460043f06bf7f", null ],
    [ "VPtrArray", "classVFoundation_1_1VPtrArray.html#a180d9f9085cc16beb03115991960b820", null ],
    [ "AddPtr", "classVFoundation_1_1VPtrArray.html#aadf838fbca0ec639f938c84003062763", null ],
    [ "Count", "classVFoundation_1_1VPtrArray.html#ac8c5277ced63ed52a2d3db45884bf44b", null ],
    [ "FreeMem", "classVFoundation_1_1VPtrArray.html#a12a8f4d1537e59f68d198e5cda5e5ec9", null ],
    [ "IsPtrInArray", "classVFoundation_1_1VPtrArray.html#a943a307c0eb26c68ca1c5c2227211719", null ],
    [ "New", "classVFoundation_1_1VPtrArray.html#a2d220999279c032a523a81be57f294e3", null ],
    [ "operator=", "classVFoundation_1_1VPtrArray.html#a32dbc3cc9db1377ee1b37198df079d08", null ],
    [ "PtrAtIndex", "classVFoundation_1_1VPtrArray.html#ad6d3af218c913cfd91335ffef50812a0", null ],
    [ "RemovePtr", "classVFoundation_1_1VPtrArray.html#a96b2c285c4fa8be7fa50d1c10e2b8553", null ],
    [ "RemovePtrAtIndex", "classVFoundation_1_1VPtrArray.html#a390c039d9db27609781cece6331bdf2c", null ],
    [ "SortWithComparisonFn", "classVFoundation_1_1VPtrArray.html#a9a8c468890941f8b848259312ccbe092", null ],
    [ "kClassName", "classVFoundation_1_1VPtrArray.html#afc308f78b8b6fa1f574fa6ec627d56fd", null ],
    [ "ms_theClass", "classVFoundation_1_1VPtrArray.html#a005bf4136fbb9d53b9331355a5cf20b8", null ]
];