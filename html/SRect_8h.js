var SRect_8h =
[
    [ "VFoundation::SRect", "structVFoundation_1_1SRect.html", "structVFoundation_1_1SRect" ]
];