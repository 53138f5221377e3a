var classVFoundation_1_1HeapBlock =
[
    [ "HeapBlock", "classVFoundation_1_1HeapBlock.html#a49db2b6423df20325c774af172fa4b1b", null ],
    [ "HeapBlock", "classVFoundation_1_1HeapBlock.html#a647e6921db78ef0b9f7b7afcc7b8d2c5", null ],
    [ "~HeapBlock", "classVFoundation_1_1HeapBlock.html#a308c2432ab4520c0926fa3081a6e74b1", null ],
    [ "Bytes", "classVFoundation_1_1HeapBlock.html#affc24cc18596877a7a5adcfb6e7cf96a", null ],
    [ "Free", "classVFoundation_1_1HeapBlock.html#a43e2a9f089615a433e564df5f2676a1d", null ],
    [ "Grow", "classVFoundation_1_1HeapBlock.html#afe42ab77b7ea7a3fa14aee15e52fdbd4", null ],
    [ "operator=", "classVFoundation_1_1HeapBlock.html#a2fc944f973d4d3da2db2403ce3c3a52e", null ],
    [ "Replace", "classVFoundation_1_1HeapBlock.html#a5220b3e6fb7ca1b3146b33b1388d78d1", null ],
    [ "Size", "classVFoundation_1_1HeapBlock.html#a4af57b168b461140a2b251cbebffa455", null ],
    [ "Swap", "classVFoundation_1_1HeapBlock.html#ac1a33efcb1f750b24130472bb11db8ca", null ],
    [ "Trim", "classVFoundation_1_1HeapBlock.html#a56f181218f095359514f74552668dde9", null ],
    [ "kAlignment", "classVFoundation_1_1HeapBlock.html#a7e412d15af996e3190b34e490658d86d", null ]
];