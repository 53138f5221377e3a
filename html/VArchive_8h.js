var VArchive_8h =
[
    [ "VFoundation::VArchive", "classVFoundation_1_1VArchive.html", "classVFoundation_1_1VArchive" ]
];