var classVFoundation_1_1VObjectRingBufferTmpl =
[
    [ "VObjectRingBufferTmpl", "classVFoundation_1_1VObjectRingBufferTmpl.html#a34b63966e8579b922ac17b1f99e988a1", null ],
    [ "~VObjectRingBufferTmpl", "classVFoundation_1_1VObjectRingBufferTmpl.html#a96d3056857259d9b266ccd17f33ad61f", null ]
];