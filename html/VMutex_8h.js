var VMutex_8h =
[
    [ "VFoundation::VMutex", "classVFoundation_1_1VMutex.html", "classVFoundation_1_1VMutex" ]
];