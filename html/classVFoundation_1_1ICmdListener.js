var classVFoundation_1_1ICmdListener =
[
    [ "~ICmdListener", "classVFoundation_1_1ICmdListener.html#ad01d2e059523f4937dd1520ea10db4c3", null ],
    [ "CommandReceived", "classVFoundation_1_1ICmdListener.html#ae7e704e599e0dddbb200dddb79986073", null ]
];