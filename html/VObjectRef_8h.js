var VObjectRef_8h =
[
    [ "VFoundation::VObjectRef< T >", "classVFoundation_1_1VObjectRef.html", "classVFoundation_1_1VObjectRef" ]
];