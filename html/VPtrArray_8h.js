var VPtrArray_8h =
[
    [ "VFoundation::VPtrArray", "classVFoundation_1_1VPtrArray.html", "classVFoundation_1_1VPtrArray" ]
];