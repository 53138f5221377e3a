var classVFoundation_1_1VCriticalSectionScope =
[
    [ "VCriticalSectionScope", "classVFoundation_1_1VCriticalSectionScope.html#ac55383ab68ac41e0625a0cac807a3e55", null ],
    [ "VCriticalSectionScope", "classVFoundation_1_1VCriticalSectionScope.html#aaf1e76d8013c634354bf32f799b1a687", null ],
    [ "VCriticalSectionScope", "classVFoundation_1_1VCriticalSectionScope.html#a45c44097b702ab211555dc4b9ab75946", null ],
    [ "~VCriticalSectionScope", "classVFoundation_1_1VCriticalSectionScope.html#aea0818b31a28875c032867e7283a88a6", null ],
    [ "IsEntered", "classVFoundation_1_1VCriticalSectionScope.html#a4cee9b6b4dc25a7cdedde17434971fc4", null ],
    [ "operator=", "classVFoundation_1_1VCriticalSectionScope.html#a1b3f19720fc037f9a6bcc418764e6a03", null ],
    [ "Section", "classVFoundation_1_1VCriticalSectionScope.html#a3a1da713b544aec1df2af09fd8584a6a", null ],
    [ "SetAndEnter", "classVFoundation_1_1VCriticalSectionScope.html#aa9ce02bf99ee9e594a0251cdca25708e", null ],
    [ "TryEnter", "classVFoundation_1_1VCriticalSectionScope.html#a8bf708f891a321aeca2f1587d30bf661", null ]
];