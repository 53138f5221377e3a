var classVFoundation_1_1VGraphEdge =
[
    [ "VGraphEdge", "classVFoundation_1_1VGraphEdge.html#a425ce2829e83dfdf883a5550f44b0ac4", null ],
    [ "VGraphEdge", "classVFoundation_1_1VGraphEdge.html#a1bf1507adf1f7b1087e1cb7a918f131b", null ],
    [ "~VGraphEdge", "classVFoundation_1_1VGraphEdge.html#a23b214900ab4df838c294f5e6e15a012", null ],
    [ "Copy", "classVFoundation_1_1VGraphEdge.html#a019281f3d9a98efeb84b08939b9426c9", null ],
    [ "DestinationNodeID", "classVFoundation_1_1VGraphEdge.html#aa14bcf40f4b251833b57202a6fda4884", null ],
    [ "EdgeID", "classVFoundation_1_1VGraphEdge.html#a44b9e42630414de56d3709f8f4cac939", null ],
    [ "New", "classVFoundation_1_1VGraphEdge.html#a7b2fd50986a30477edc5dec66c83c44e", null ],
    [ "Node1", "classVFoundation_1_1VGraphEdge.html#a66961b7ece3b2f1c0b88d9548be2bec6", null ],
    [ "Node2", "classVFoundation_1_1VGraphEdge.html#a0b2b80b686fc21c133635ea5453c5eab", null ],
    [ "operator=", "classVFoundation_1_1VGraphEdge.html#ad38335bf082dd2432e42e9d942e00108", null ],
    [ "SerializeAsXML", "classVFoundation_1_1VGraphEdge.html#a5c0785f62aba016cd7e26aa9471bad4d", null ],
    [ "SetEdgeID", "classVFoundation_1_1VGraphEdge.html#a68e7cf0b1a36636684a7244425fd3b08", null ],
    [ "SetNodes", "classVFoundation_1_1VGraphEdge.html#a5781f9eb0fdb612f047ce41c8c536995", null ],
    [ "SourceNodeID", "classVFoundation_1_1VGraphEdge.html#a21413051f9520876647bb437cc743e78", null ],
    [ "UpdateNodeIDs", "classVFoundation_1_1VGraphEdge.html#a745ccbb154f85af043dd7274c1c2f484", null ],
    [ "kClassName", "classVFoundation_1_1VGraphEdge.html#ae78289e6444b52175481f6e99bfb27d0", null ],
    [ "kNoID", "classVFoundation_1_1VGraphEdge.html#afd60fc92460f6ed627cdd3cf07f34ce7", null ],
    [ "ms_theClass", "classVFoundation_1_1VGraphEdge.html#a3db349138f8e1b236cf675d91d9417cc", null ]
];