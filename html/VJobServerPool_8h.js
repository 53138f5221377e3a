var VJobServerPool_8h =
[
    [ "VFoundation::VJobServerPool", "classVFoundation_1_1VJobServerPool.html", "classVFoundation_1_1VJobServerPool" ]
];