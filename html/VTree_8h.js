var VTree_8h =
[
    [ "VFoundation::VTree", "classVFoundation_1_1VTree.html", "classVFoundation_1_1VTree" ]
];