var VXMLFileIOTinyXmlFactory_8h =
[
    [ "VFoundation::VXMLFileIOTinyXmlFactory", "classVFoundation_1_1VXMLFileIOTinyXmlFactory.html", "classVFoundation_1_1VXMLFileIOTinyXmlFactory" ]
];