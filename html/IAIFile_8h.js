var IAIFile_8h =
[
    [ "VFoundation::IAIFile", "classVFoundation_1_1IAIFile.html", "classVFoundation_1_1IAIFile" ]
];