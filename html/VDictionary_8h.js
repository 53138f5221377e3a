var VDictionary_8h =
[
    [ "VFoundation::VDictionary", "classVFoundation_1_1VDictionary.html", "classVFoundation_1_1VDictionary" ]
];