var VFile_8h =
[
    [ "VFoundation::VFile", "classVFoundation_1_1VFile.html", "classVFoundation_1_1VFile" ]
];