var classVFoundation_1_1Registered =
[
    [ "~Registered", "classVFoundation_1_1Registered.html#a742507cb8866407698296439eb07a514", null ],
    [ "TheClass", "classVFoundation_1_1Registered.html#afbdf215410ca6143ed4fbf5f9ecac840", null ]
];