var VAIFile_8h =
[
    [ "VFoundation::VAIFile", "classVFoundation_1_1VAIFile.html", "classVFoundation_1_1VAIFile" ]
];