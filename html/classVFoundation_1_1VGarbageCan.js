var classVFoundation_1_1VGarbageCan =
[
    [ "Context", "classVFoundation_1_1VGarbageCan_1_1Context.html", "classVFoundation_1_1VGarbageCan_1_1Context" ],
    [ "VGarbageCan", "classVFoundation_1_1VGarbageCan.html#aebf99ffe8266191f58da9e767cd758a2", null ],
    [ "~VGarbageCan", "classVFoundation_1_1VGarbageCan.html#a6574bee8fd138c0066985f81580de294", null ],
    [ "VGarbageCan", "classVFoundation_1_1VGarbageCan.html#aa5be3feb2656658740c79aa6b24562c2", null ],
    [ "AddGarbageToCan", "classVFoundation_1_1VGarbageCan.html#ac42363a5f3f0e92609a3fce4ea22084e", null ],
    [ "CloseGarbageCan", "classVFoundation_1_1VGarbageCan.html#a43dcd27c583ff410d9fe955215702acd", null ],
    [ "New", "classVFoundation_1_1VGarbageCan.html#aa68b0fe38251d3555e657f30770a8bfc", null ],
    [ "OpenCount", "classVFoundation_1_1VGarbageCan.html#a6511797afcf7fa393808b5f15521e34f", null ],
    [ "OpenGarbageCan", "classVFoundation_1_1VGarbageCan.html#aa449d964e75526ffbb5fd1a1fe6fc8bb", null ],
    [ "ParkedCount", "classVFoundation_1_1VGarbageCan.html#ad3fb2ad7a97ffe4b1baf427fa4d7aacc", null ],
    [ "kClassName", "classVFoundation_1_1VGarbageCan.html#ad9d6b9536eaf35ebc8deb513a84c8b3d", null ],
    [ "kDefaultCapacity", "classVFoundation_1_1VGarbageCan.html#ab26d01f05d2e6068173791e437f7a90a", null ],
    [ "ms_theClass", "classVFoundation_1_1VGarbageCan.html#a7fc87d3563c4fabedbda70356d5657c5", null ]
];