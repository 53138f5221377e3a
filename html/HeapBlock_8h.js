var HeapBlock_8h =
[
    [ "VFoundation::HeapBlock", "classVFoundation_1_1HeapBlock.html", "classVFoundation_1_1HeapBlock" ]
];