var classVFoundation_1_1IXMLFileIOFactory =
[
    [ "~IXMLFileIOFactory", "classVFoundation_1_1IXMLFileIOFactory.html#ad4bbf89470f4a946ff4ddb1d72073e36", null ],
    [ "New", "classVFoundation_1_1IXMLFileIOFactory.html#a1742ec151f2b04ee6b4d9ee88782ca16", null ]
];