var classVFoundation_1_1VTree =
[
    [ "VTree", "classVFoundation_1_1VTree.html#a9d4cb173ee3bedf4f7258889de378cfa", null ],
    [ "VTree", "classVFoundation_1_1VTree.html#a83dfc4c397df21b6423475d11d118bdd", null ],
    [ "~VTree", "classVFoundation_1_1VTree.html#a8aa4b3da823ae8e864c6af2b2d1f46ab", null ],
    [ "AddDataLeaf", "classVFoundation_1_1VTree.html#a233434b06149ebeb07560f3215e6a4eb", null ],
    [ "AddLeaf", "classVFoundation_1_1VTree.html#a39ac2a7849332e3bb3d56359c6ab8993", null ],
    [ "AddObject", "classVFoundation_1_1VTree.html#a3e3fecfc9f6583f767d54bdfa584b688", null ],
    [ "Children", "classVFoundation_1_1VTree.html#a39673540a461e1be23cc280a1484690d", null ],
    [ "ClearTree", "classVFoundation_1_1VTree.html#a22435d7d7729d6f1ba32c627c25948dd", null ],
    [ "Count", "classVFoundation_1_1VTree.html#ab83104949a0a3ab7031d3a84f67821de", null ],
    [ "IsOpaque", "classVFoundation_1_1VTree.html#a2eaaaafd5c63f98b417ec9d749ab935c", null ],
    [ "New", "classVFoundation_1_1VTree.html#a24fdc6f69f045741b67179b81687736b", null ],
    [ "NodeData", "classVFoundation_1_1VTree.html#a49d6600c3d46e298b5f86d3a57a00a72", null ],
    [ "ObjectAtIndex", "classVFoundation_1_1VTree.html#a8ad88835408c99379d2f4d44997233ad", null ],
    [ "ObjectForVisibleNodeWithFlatIndex", "classVFoundation_1_1VTree.html#ae86854a9db63439632c5a66df258aaad", null ],
    [ "OpaqueSpan", "classVFoundation_1_1VTree.html#a9fe22996ad1c6cffa6b7bf1b83edd922", null ],
    [ "operator=", "classVFoundation_1_1VTree.html#af6df12d4325f10be649611f1fbafcfb7", null ],
    [ "Parent", "classVFoundation_1_1VTree.html#a5c4165794987b1e40c0278c3699a7172", null ],
    [ "SetNodeData", "classVFoundation_1_1VTree.html#afb20bafbcde64705611a2f3491132c14", null ],
    [ "SetNodeOpaque", "classVFoundation_1_1VTree.html#a20ea69e3e141c32f5dfdc10ad014aae6", null ],
    [ "kClassName", "classVFoundation_1_1VTree.html#a641e7df59e23609c0902d35965b7cf2c", null ],
    [ "ms_theClass", "classVFoundation_1_1VTree.html#a07b222feedc734ae33b1633f0591d424", null ]
];