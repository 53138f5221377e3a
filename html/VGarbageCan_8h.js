var VGarbageCan_8h =
[
    [ "VFoundation::VGarbageCan", "classVFoundation_1_1VGarbageCan.html", "classVFoundation_1_1VGarbageCan" ],
    [ "VFoundation::VGarbageCan::Context", "classVFoundation_1_1VGarbageCan_1_1Context.html", "classVFoundation_1_1VGarbageCan_1_1Context" ]
];