var classVFoundation_1_1IVJobDelegate =
[
    [ "~IVJobDelegate", "classVFoundation_1_1IVJobDelegate.html#abd453b86764f94cd3605d59cf594f5bf", null ],
    [ "JobFailed", "classVFoundation_1_1IVJobDelegate.html#a887c2e297f602e4084a12652d8bdc268", null ],
    [ "JobQueued", "classVFoundation_1_1IVJobDelegate.html#a1f9e56240e7d687f9a6e0db0b23ba410", null ],
    [ "JobStarted", "classVFoundation_1_1IVJobDelegate.html#a846d7b02385555cc1dbcb9c79b2d04f5", null ],
    [ "JobSucceeded", "classVFoundation_1_1IVJobDelegate.html#a625eb10312e28bddc886c43c43e76c9d", null ]
];