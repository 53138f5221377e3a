var BlockFile_8h =
[
    [ "VFoundation::BlockFile", "classVFoundation_1_1BlockFile.html", "classVFoundation_1_1BlockFile" ]
];