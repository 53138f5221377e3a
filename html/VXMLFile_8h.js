var VXMLFile_8h =
[
    [ "VFoundation::VXMLFile", "classVFoundation_1_1VXMLFile.html", "classVFoundation_1_1VXMLFile" ]
];