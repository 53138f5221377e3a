var VXMLFileIOTinyXml_8h =
[
    [ "VFoundation::VXMLFileIOTinyXml", "classVFoundation_1_1VXMLFileIOTinyXml.html", "classVFoundation_1_1VXMLFileIOTinyXml" ]
];