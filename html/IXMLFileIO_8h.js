var IXMLFileIO_8h =
[
    [ "VFoundation::IXMLFileIO", "classVFoundation_1_1IXMLFileIO.html", "classVFoundation_1_1IXMLFileIO" ]
];