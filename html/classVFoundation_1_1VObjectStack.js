var classVFoundation_1_1VObjectStack =
[
    [ "VObjectStack", "classVFoundation_1_1VObjectStack.html#a81ca2895f359b1142bbb18c825208623", null ],
    [ "Array", "classVFoundation_1_1VObjectStack.html#a351fb12532292bc7ecc7d41d3464c415", null ],
    [ "Array", "classVFoundation_1_1VObjectStack.html#a596fd17efaf38abd983f0d725c7f8525", null ],
    [ "New", "classVFoundation_1_1VObjectStack.html#a73865d8308f3b7d597b00c76db6c12e2", null ],
    [ "ObjectAtTopOfStack", "classVFoundation_1_1VObjectStack.html#a68923d9edda9a21cc153dadd6cb92a23", null ],
    [ "operator=", "classVFoundation_1_1VObjectStack.html#a02d0e3c95bb21b55cba74f2f201450bd", null ],
    [ "Pop", "classVFoundation_1_1VObjectStack.html#a06ffc69c32ab5ee51d09fdb3b8aa2aba", null ],
    [ "kClassName", "classVFoundation_1_1VObjectStack.html#a948e1aff143c1a54d508256b962db926", null ],
    [ "ms_theClass", "classVFoundation_1_1VObjectStack.html#a2f930d1cd12425a68ec81cfdcff18abd", null ]
];