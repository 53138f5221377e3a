var classVFoundation_1_1VXMLFileIOTinyXmlFactory =
[
    [ "New", "classVFoundation_1_1VXMLFileIOTinyXmlFactory.html#a27b9d94c50c3820477505e677b37589b", null ]
];