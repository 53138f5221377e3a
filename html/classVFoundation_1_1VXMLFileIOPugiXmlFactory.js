var classVFoundation_1_1VXMLFileIOPugiXmlFactory =
[
    [ "IsAvailable", "classVFoundation_1_1VXMLFileIOPugiXmlFactory.html#ac2416f9018dfa4a220df51d86e681702", null ],
    [ "New", "classVFoundation_1_1VXMLFileIOPugiXmlFactory.html#a83798959065ba333d602efe62301bd6c", null ]
];