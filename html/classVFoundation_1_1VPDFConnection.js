var classVFoundation_1_1VPDFConnection =
[
    [ "VPDFConnection", "classVFoundation_1_1VPDFConnection.html#a9e861125bcbb4cbf5da4b8ac309f6e07", null ],
    [ "VPDFConnection", "classVFoundation_1_1VPDFConnection.html#a6af32a708792a7fb4457c32b64ba33be", null ],
    [ "InitializeClass", "classVFoundation_1_1VPDFConnection.html#a2407a6693aa9e1e989ef92ef1633b58e", null ],
    [ "Name", "classVFoundation_1_1VPDFConnection.html#ac1cda0d93def7c5b5c5771c9574aad24", null ],
    [ "New", "classVFoundation_1_1VPDFConnection.html#a5f923614d658ae65bd78e9f76b14a977", null ],
    [ "operator=", "classVFoundation_1_1VPDFConnection.html#a16477d962bbe43047c413765d4e60df9", null ],
    [ "Page", "classVFoundation_1_1VPDFConnection.html#a7946eb16f0730b9bbb2c03352108cfb8", null ],
    [ "SetName", "classVFoundation_1_1VPDFConnection.html#a8422b0d426b2d92e6ca26ae60b6c5f4e", null ],
    [ "SetPage", "classVFoundation_1_1VPDFConnection.html#a963f5be0f45c384aeba89af55fb4d26d", null ],
    [ "UninitializeClass", "classVFoundation_1_1VPDFConnection.html#ab1dbb9af052ff042ecae5d742a3e7e77", null ],
    [ "TSavedObject< VPDFConnection >", "classVFoundation_1_1VPDFConnection.html#a76aa8a98e2e6153389d93c3ce47035d5", null ],
    [ "kClassName", "classVFoundation_1_1VPDFConnection.html#ae6ba31a0c2b1082dad63e086afec6d89", null ],
    [ "ms_theClass", "classVFoundation_1_1VPDFConnection.html#a8682027805ee76723788ed933fbbc3cc", null ]
];