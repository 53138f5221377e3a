var VDictionaryPair_8h =
[
    [ "VFoundation::VDictionaryPair", "classVFoundation_1_1VDictionaryPair.html", "classVFoundation_1_1VDictionaryPair" ]
];