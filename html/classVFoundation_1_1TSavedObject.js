var classVFoundation_1_1TSavedObject =
[
    [ "TSavedObject", "classVFoundation_1_1TSavedObject.html#ac186b19fc7c65229cd3a6dce9f2996a0", null ],
    [ "~TSavedObject", "classVFoundation_1_1TSavedObject.html#a8a3c463b12fa7c0b1bfff3da217f1d28", null ],
    [ "TSavedObject", "classVFoundation_1_1TSavedObject.html#aa62c6147561aacf6a063628af670871a", null ],
    [ "Copy", "classVFoundation_1_1TSavedObject.html#a5ce86149e33a21063f1194e1663af01a", null ],
    [ "GetDescription", "classVFoundation_1_1TSavedObject.html#ab7005b69b686e3d912ce207d98c108ce", null ],
    [ "IsEqual", "classVFoundation_1_1TSavedObject.html#aeb32c322de27df5a90081827619956af", null ],
    [ "MembersLoaded", "classVFoundation_1_1TSavedObject.html#ab928231e0c9ab4df454e3d0f8934f343", null ],
    [ "operator=", "classVFoundation_1_1TSavedObject.html#afd3c8f182e9ba2aa7b784de9a2975be4", null ],
    [ "Serialize", "classVFoundation_1_1TSavedObject.html#a9680d4b99f3ef21be7eadd2a5ab9762d", null ],
    [ "SerializeAsXML", "classVFoundation_1_1TSavedObject.html#a9ba1b3209857aabcf0d6a1ac2efd91ea", null ]
];