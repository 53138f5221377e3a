var IXMLFileIOFactory_8h =
[
    [ "VFoundation::IXMLFileIOFactory", "classVFoundation_1_1IXMLFileIOFactory.html", "classVFoundation_1_1IXMLFileIOFactory" ]
];