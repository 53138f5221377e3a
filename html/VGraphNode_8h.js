var VGraphNode_8h =
[
    [ "VFoundation::VGraphNode", "classVFoundation_1_1VGraphNode.html", "classVFoundation_1_1VGraphNode" ]
];