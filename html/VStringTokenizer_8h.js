var VStringTokenizer_8h =
[
    [ "VFoundation::VStringTokenizer", "classVFoundation_1_1VStringTokenizer.html", "classVFoundation_1_1VStringTokenizer" ]
];