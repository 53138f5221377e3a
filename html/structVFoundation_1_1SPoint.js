var structVFoundation_1_1SPoint =
[
    [ "operator==", "structVFoundation_1_1SPoint.html#a9da4255e2bd065b4e6d06a6423153074", null ],
    [ "PointFromString", "structVFoundation_1_1SPoint.html#a1911fb03a4f15c3e418bf5680bb4eb83", null ],
    [ "PointToString", "structVFoundation_1_1SPoint.html#a8976e984f93459e6896fd92a6f5379ab", null ],
    [ "kTextSize", "structVFoundation_1_1SPoint.html#a2a4afcc22192d4d9c00fda715b064a73", null ],
    [ "x", "structVFoundation_1_1SPoint.html#a3fee1c4c8918200458e5b357a472af8d", null ],
    [ "y", "structVFoundation_1_1SPoint.html#a9c0bb7479494b893a104b49bfbf97925", null ]
];