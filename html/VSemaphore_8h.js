var VSemaphore_8h =
[
    [ "VFoundation::VSemaphore", "classVFoundation_1_1VSemaphore.html", "classVFoundation_1_1VSemaphore" ]
];