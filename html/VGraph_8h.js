var VGraph_8h =
[
    [ "VFoundation::VGraph", "classVFoundation_1_1VGraph.html", "classVFoundation_1_1VGraph" ]
];