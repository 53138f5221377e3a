var classVFoundation_1_1VXMLFileIOTinyXml =
[
    [ "VXMLFileIOTinyXml", "classVFoundation_1_1VXMLFileIOTinyXml.html#a6d0ed01059406fa5a2250bb993f50c0d", null ],
    [ "VXMLFileIOTinyXml", "classVFoundation_1_1VXMLFileIOTinyXml.html#a4fc48dbd38ee571014c13a14732eac9c", null ],
    [ "~VXMLFileIOTinyXml", "classVFoundation_1_1VXMLFileIOTinyXml.html#ad3a60524901fe9766f7689a118cb3d64", null ],
    [ "GetNodeName", "classVFoundation_1_1VXMLFileIOTinyXml.html#aa71bdec56f16f11c3ddd75a5c668f5b9", null ],
    [ "GetNodeType", "classVFoundation_1_1VXMLFileIOTinyXml.html#a1c4ad1a85eb843c60f725bce3ed753ae", null ],
    [ "operator=", "classVFoundation_1_1VXMLFileIOTinyXml.html#a6daa29db57d07060fac2b8873e33038f", null ],
    [ "ReadAttribute", "classVFoundation_1_1VXMLFileIOTinyXml.html#a139f8b69df8c4e5bcf18a43ceada9f52", null ],
    [ "ReadText", "classVFoundation_1_1VXMLFileIOTinyXml.html#aa770e175c94c62d271378b435d63abc1", null ],
    [ "WriteAttribute", "classVFoundation_1_1VXMLFileIOTinyXml.html#a83183cf0c00d1abbd00b4049fc22287b", null ],
    [ "WriteText", "classVFoundation_1_1VXMLFileIOTinyXml.html#a35b227ac2d92f54838bcb0c9811a9b17", null ],
    [ "XMLTreeIO< VXMLFileIOTinyXml >", "classVFoundation_1_1VXMLFileIOTinyXml.html#a5d2615a4bcfb4167cc21a6869816c872", null ]
];