var classVFoundation_1_1XMLTreeIO =
[
    [ "Clear", "classVFoundation_1_1XMLTreeIO.html#aee4eebfeae0f4c96841a0524a14c569b", null ],
    [ "CloseChild", "classVFoundation_1_1XMLTreeIO.html#afbf98fab26d23e13ab1f336d57ed8b42", null ],
    [ "CloseChildren", "classVFoundation_1_1XMLTreeIO.html#a966c1709bfc69ee4f5da3b9511d3d7e0", null ],
    [ "CloseFile", "classVFoundation_1_1XMLTreeIO.html#a64b6a21b226549abd16c0d694691ec73", null ],
    [ "GetLevel", "classVFoundation_1_1XMLTreeIO.html#af9c95f916e2a0f3a51c701d14a8a3218", null ],
    [ "GetMode", "classVFoundation_1_1XMLTreeIO.html#a53636ced0041227c48a82efa173700e3", null ],
    [ "IsComplete", "classVFoundation_1_1XMLTreeIO.html#a6afab0cc9f68e73f3376769a828977d9", null ],
    [ "IsValid", "classVFoundation_1_1XMLTreeIO.html#a7110a923a66fc6ee43b9ee0554ced625", null ],
    [ "LoadFile", "classVFoundation_1_1XMLTreeIO.html#acc4414e74d1b5cc64fd195dbce48d4d6", null ],
    [ "OpenChildren", "classVFoundation_1_1XMLTreeIO.html#a43e2c6c7a45776d8df62d049683ca3d9", null ],
    [ "OpenFileForRead", "classVFoundation_1_1XMLTreeIO.html#a2b355efa0f7071e5ecf69147cee24bb0", null ],
    [ "OpenFileForWrite", "classVFoundation_1_1XMLTreeIO.html#ab8888dd3677cad9287548f26678b9f06", null ],
    [ "OpenFirstChild", "classVFoundation_1_1XMLTreeIO.html#a3f2c607dde5189c7b5b9c5cf81012a55", null ],
    [ "OpenFirstChildElement", "classVFoundation_1_1XMLTreeIO.html#ab51f0c0e7c2733a3762c1af4bab86756", null ],
    [ "OpenFirstChildText", "classVFoundation_1_1XMLTreeIO.html#a2038b166d3b0f7e2ab2546a7eb3aa6f9", null ],
    [ "OpenNextSibling", "classVFoundation_1_1XMLTreeIO.html#abf8e64b5de0d719a4a5e1ad9e881fa53", null ],
    [ "OpenNextSiblingElement", "classVFoundation_1_1XMLTreeIO.html#aed4c0db16947824bff53efd8ee35076d", null ],
    [ "OpenNextSiblingText", "classVFoundation_1_1XMLTreeIO.html#aa9cd7d43b890953e6cb8c9f31311187c", null ],
    [ "PrintIndent", "classVFoundation_1_1XMLTreeIO.html#a061b1af9f752ad661b24339471c406ea", null ],
    [ "WriteFileToString", "classVFoundation_1_1XMLTreeIO.html#a5a4e75dbe5073047832c9626a3d99195", null ]
];