var classVFoundation_1_1VDate =
[
    [ "VDate", "classVFoundation_1_1VDate.html#af3cfbe11dfd2a8a72901157095816a38", null ],
    [ "VDate", "classVFoundation_1_1VDate.html#a6702c8c5f3751352f0b9db100e162258", null ],
    [ "VDate", "classVFoundation_1_1VDate.html#a45aed197a129afc395f17ccfec60da5e", null ],
    [ "AsString", "classVFoundation_1_1VDate.html#a3c14f3bec77d75b13ed22e2bab186a79", null ],
    [ "GetDescription", "classVFoundation_1_1VDate.html#a45f4603ba7c6a9ecdf3e148506c1e9fd", null ],
    [ "New", "classVFoundation_1_1VDate.html#a6b3d9fff1822ecd56cd70920bb38eaba", null ],
    [ "Now", "classVFoundation_1_1VDate.html#a715201ffedae4dcea923e7a6b05745d5", null ],
    [ "NowAsString", "classVFoundation_1_1VDate.html#aba824b1c54aa00969edcda9e66803763", null ],
    [ "operator<=>", "classVFoundation_1_1VDate.html#ab2607b6a73d8b26406f038b557669298", null ],
    [ "operator=", "classVFoundation_1_1VDate.html#a01ae3e5a479c1c91821af6afce3a50dd", null ],
    [ "operator==", "classVFoundation_1_1VDate.html#af1fa9eb083720485615e963e7ce936f6", null ],
    [ "Seconds", "classVFoundation_1_1VDate.html#a0293982a750b9b524358bef87276440e", null ],
    [ "SetSeconds", "classVFoundation_1_1VDate.html#a65a5ad98139550a9b434e1ec07f31aff", null ],
    [ "TSavedObject< VDate >", "classVFoundation_1_1VDate.html#a8dc2f08f8202f01c179c8dfce444a612", null ],
    [ "kClassName", "classVFoundation_1_1VDate.html#a1e9bb77706662464c26ff0ac2159e74c", null ],
    [ "ms_theClass", "classVFoundation_1_1VDate.html#a6235016811fb7358bb3c390f26f5465c", null ]
];