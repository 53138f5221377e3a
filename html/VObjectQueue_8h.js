var VObjectQueue_8h =
[
    [ "VFoundation::VObjectQueue", "classVFoundation_1_1VObjectQueue.html", "classVFoundation_1_1VObjectQueue" ]
];