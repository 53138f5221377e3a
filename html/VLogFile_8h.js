var VLogFile_8h =
[
    [ "VFoundation::VLogFile", "classVFoundation_1_1VLogFile.html", "classVFoundation_1_1VLogFile" ]
];