var VHashTable_8h =
[
    [ "VFoundation::VHashTable", "classVFoundation_1_1VHashTable.html", "classVFoundation_1_1VHashTable" ]
];