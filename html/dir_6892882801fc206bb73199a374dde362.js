var dir_6892882801fc206bb73199a374dde362 =
[
    [ "VGraph.h", "VGraph_8h.html", "VGraph_8h" ],
    [ "VGraphEdge.h", "VGraphEdge_8h.html", "VGraphEdge_8h" ],
    [ "VGraphNode.h", "VGraphNode_8h.html", "VGraphNode_8h" ]
];