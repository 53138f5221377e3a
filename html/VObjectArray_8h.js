var VObjectArray_8h =
[
    [ "VFoundation::VObjectArray", "classVFoundation_1_1VObjectArray.html", "classVFoundation_1_1VObjectArray" ]
];