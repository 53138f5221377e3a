var VRect_8h =
[
    [ "VFoundation::VRect", "classVFoundation_1_1VRect.html", "classVFoundation_1_1VRect" ]
];