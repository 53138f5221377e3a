var VObjectRingBufferTmpl_8h =
[
    [ "VFoundation::VObjectRingBufferTmpl< T >", "classVFoundation_1_1VObjectRingBufferTmpl.html", "classVFoundation_1_1VObjectRingBufferTmpl" ]
];