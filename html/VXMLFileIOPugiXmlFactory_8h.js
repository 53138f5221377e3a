var VXMLFileIOPugiXmlFactory_8h =
[
    [ "VFoundation::VXMLFileIOPugiXmlFactory", "classVFoundation_1_1VXMLFileIOPugiXmlFactory.html", "classVFoundation_1_1VXMLFileIOPugiXmlFactory" ]
];