var structVFoundation_1_1TInterval =
[
    [ "Contains", "structVFoundation_1_1TInterval.html#acbc5b817e729e67dc3c618185b1f2dff", null ],
    [ "End", "structVFoundation_1_1TInterval.html#aec85a08fd46c3bc3168ad150e44fdb78", null ],
    [ "Intersection", "structVFoundation_1_1TInterval.html#a6384497e138c424bd168af6e62b8bdac", null ],
    [ "IsEmpty", "structVFoundation_1_1TInterval.html#af6870607795467690d241b365443ca13", null ],
    [ "Normalise", "structVFoundation_1_1TInterval.html#a78f3068933981c1986169f1b709614f5", null ],
    [ "operator==", "structVFoundation_1_1TInterval.html#aa60fa872eb20e92c2dd62b383f30c6ca", null ],
    [ "Union", "structVFoundation_1_1TInterval.html#a4ec8d14e7fce069495036b86adce0f59", null ],
    [ "m_length", "structVFoundation_1_1TInterval.html#a9798b108e82a505f18c0104dfe807bc7", null ],
    [ "m_start", "structVFoundation_1_1TInterval.html#aca966b4f1203c37daebe0f2ecaa3ba85", null ]
];