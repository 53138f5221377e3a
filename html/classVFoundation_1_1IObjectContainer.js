var classVFoundation_1_1IObjectContainer =
[
    [ "~IObjectContainer", "classVFoundation_1_1IObjectContainer.html#a145ca130c1ff942cdf7af73b2970193a", null ],
    [ "AddObject", "classVFoundation_1_1IObjectContainer.html#aeeed09ff217815222f1121d6d06c133b", null ],
    [ "Count", "classVFoundation_1_1IObjectContainer.html#ae58fce52ca70da99f84d295f16e8d692", null ],
    [ "ObjectAtIndex", "classVFoundation_1_1IObjectContainer.html#aed4318cf96424db31ac9c635c4f31c69", null ]
];