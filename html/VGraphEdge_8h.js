var VGraphEdge_8h =
[
    [ "VFoundation::VGraphEdge", "classVFoundation_1_1VGraphEdge.html", "classVFoundation_1_1VGraphEdge" ]
];