var classVFoundation_1_1VNotification =
[
    [ "VNotification", "classVFoundation_1_1VNotification.html#af316820f359ad7a553c72efe82dbd1ca", null ],
    [ "VNotification", "classVFoundation_1_1VNotification.html#abfed85efe86462446e0188122d0132c6", null ],
    [ "~VNotification", "classVFoundation_1_1VNotification.html#a60339ef3b406670d1d7a0647483e6721", null ],
    [ "Attachment", "classVFoundation_1_1VNotification.html#a3e26f527b4ab166d60eba3153333ca2d", null ],
    [ "InitializeClass", "classVFoundation_1_1VNotification.html#a1b87aa78eee8f43faf85a072c0abd661", null ],
    [ "Name", "classVFoundation_1_1VNotification.html#a94243508f1504bf29f84dcbf238f2764", null ],
    [ "New", "classVFoundation_1_1VNotification.html#aebc4e592ecc969c595c1e698ef643584", null ],
    [ "Object", "classVFoundation_1_1VNotification.html#a9dfc7cbab2c5cd0dabd717847863543d", null ],
    [ "operator=", "classVFoundation_1_1VNotification.html#a92036562ea2541e02288d74fe3a1f2dd", null ],
    [ "SetAttachment", "classVFoundation_1_1VNotification.html#a861bbdba049ba73161181847d21ddfdb", null ],
    [ "SetName", "classVFoundation_1_1VNotification.html#ab75f51ba89e9a814316a45c4c4f87433", null ],
    [ "SetObject", "classVFoundation_1_1VNotification.html#ac91c999c25fa16246e073abfd12fb919", null ],
    [ "SetUserInfo", "classVFoundation_1_1VNotification.html#ae4e28e2deb5319f96168edcc3f83438e", null ],
    [ "SetUserVal", "classVFoundation_1_1VNotification.html#a5f9f4cae6404c773654081a0ffc9c928", null ],
    [ "UninitializeClass", "classVFoundation_1_1VNotification.html#aee5510234050603f66c8146450928075", null ],
    [ "UserInfo", "classVFoundation_1_1VNotification.html#afe78158f108cdded4112234f07f59c53", null ],
    [ "UserVal", "classVFoundation_1_1VNotification.html#a7d7f49bceb5c575dd5a7fac024d959fd", null ],
    [ "kClassName", "classVFoundation_1_1VNotification.html#a1443303f9aa6d84ae7d5dad79aaedc07", null ],
    [ "ms_theClass", "classVFoundation_1_1VNotification.html#a6f772b7b4b045711fd29ebabad8d8d7e", null ]
];