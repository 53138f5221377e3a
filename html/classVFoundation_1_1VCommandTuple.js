var classVFoundation_1_1VCommandTuple =
[
    [ "eKind", "classVFoundation_1_1VCommandTuple.html#a65fb997d2a26b186a3d14be45c24ec24", [
      [ "eNone", "classVFoundation_1_1VCommandTuple.html#a65fb997d2a26b186a3d14be45c24ec24a48e429ff621f1768e7dee62ed5273c0c", null ],
      [ "eMessage", "classVFoundation_1_1VCommandTuple.html#a65fb997d2a26b186a3d14be45c24ec24a2f4928b014054ba95a781ad8f6947bea", null ],
      [ "eConnect", "classVFoundation_1_1VCommandTuple.html#a65fb997d2a26b186a3d14be45c24ec24a89a78f9b12c222a58c8ebbd0c2e50505", null ],
      [ "eDisconnect", "classVFoundation_1_1VCommandTuple.html#a65fb997d2a26b186a3d14be45c24ec24a8a970ab8f63b7253271ca5fbbf474c01", null ]
    ] ],
    [ "VCommandTuple", "classVFoundation_1_1VCommandTuple.html#af28a2c505f9e7d08b3d234bc0a1c0677", null ],
    [ "VCommandTuple", "classVFoundation_1_1VCommandTuple.html#a2c1bc3a5a5ffa76829caaa98af27fdea", null ],
    [ "~VCommandTuple", "classVFoundation_1_1VCommandTuple.html#a90d892a811f4813f11dcb892bf7186fb", null ],
    [ "Center", "classVFoundation_1_1VCommandTuple.html#a36c91996fcc47ed4806b3fdd464028c0", null ],
    [ "ClearAndRelease", "classVFoundation_1_1VCommandTuple.html#af69e83fe8b64710a3188cb474da1736a", null ],
    [ "InitializeClass", "classVFoundation_1_1VCommandTuple.html#a334df0e664c1b4252c2ec5019fb18204", null ],
    [ "Kind", "classVFoundation_1_1VCommandTuple.html#a60166549a1a739dd8716bc0b31048e0c", null ],
    [ "Label", "classVFoundation_1_1VCommandTuple.html#a6809076b768ef19091c7186e718160f1", null ],
    [ "Message", "classVFoundation_1_1VCommandTuple.html#af37a73c2f22f22f5abd6acbab29af4ca", null ],
    [ "New", "classVFoundation_1_1VCommandTuple.html#ad11b38a5acb315a567a32f4d2b136093", null ],
    [ "operator=", "classVFoundation_1_1VCommandTuple.html#a2e83cb0b04dd2b22559450bb24a65049", null ],
    [ "SetAndRetainConnect", "classVFoundation_1_1VCommandTuple.html#af0984ffa8fa38e643fc632be2807b723", null ],
    [ "SetAndRetainDisconnect", "classVFoundation_1_1VCommandTuple.html#ab4c33eb5bf00f822f942207d87a10f09", null ],
    [ "SetAndRetainMessage", "classVFoundation_1_1VCommandTuple.html#aa03a569694cfd7f831be7ec5577bc146", null ],
    [ "SetGarbageCan", "classVFoundation_1_1VCommandTuple.html#a66a8699e680bcd524528fb15dbc21762", null ],
    [ "Source", "classVFoundation_1_1VCommandTuple.html#a47dad15523f1232c9cf9e3010e35763c", null ],
    [ "SourceID", "classVFoundation_1_1VCommandTuple.html#a73ffb07a58078da5d40211aa39465f66", null ],
    [ "Target", "classVFoundation_1_1VCommandTuple.html#a70ce0fc50a4178144f0b8d6183e6d277", null ],
    [ "TargetID", "classVFoundation_1_1VCommandTuple.html#ad1772e2d3bbb3b412d791bdca6584696", null ],
    [ "UninitializeClass", "classVFoundation_1_1VCommandTuple.html#acabbfc7a213e913bb16d594981a62ed3", null ],
    [ "kClassName", "classVFoundation_1_1VCommandTuple.html#adc045ebb056dae579374b61c8f90f51d", null ],
    [ "kNoID", "classVFoundation_1_1VCommandTuple.html#ae4d25bda0fc85491ed6ae2561d18fe7f", null ],
    [ "ms_theClass", "classVFoundation_1_1VCommandTuple.html#afd21adc9722d69fdbe5f30b8a1558cfb", null ]
];