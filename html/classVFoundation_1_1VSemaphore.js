var classVFoundation_1_1VSemaphore =
[
    [ "VSemaphore", "classVFoundation_1_1VSemaphore.html#a412cece0f67716ee6cd6f34460a77ded", null ],
    [ "VSemaphore", "classVFoundation_1_1VSemaphore.html#a8938d4aa5de400c0e4c17636c6c9340e", null ],
    [ "VSemaphore", "classVFoundation_1_1VSemaphore.html#a3e7466c75bd307603d9d593f1c4818ca", null ],
    [ "~VSemaphore", "classVFoundation_1_1VSemaphore.html#aec4cbd6f4d2341cdcb3e914adf6d990f", null ],
    [ "Init", "classVFoundation_1_1VSemaphore.html#ae2cc6cc9db48f331dafef1fa97a9dab7", null ],
    [ "MaxSignals", "classVFoundation_1_1VSemaphore.html#a43fad9a2b362743e2c5b756dc2f3c10a", null ],
    [ "Name", "classVFoundation_1_1VSemaphore.html#aabf0a669dfad9c624d0bd3dedfc4cef3", null ],
    [ "New", "classVFoundation_1_1VSemaphore.html#a4ca5360f3e5ec79d6cedfcf8bb0d88e6", null ],
    [ "operator=", "classVFoundation_1_1VSemaphore.html#af42b6ee3b4eadcf95c411e69e9b42c57", null ],
    [ "ReleaseSemaphore", "classVFoundation_1_1VSemaphore.html#a74601f89e3ab34febbad97310f624e5a", null ],
    [ "SignalCount", "classVFoundation_1_1VSemaphore.html#a7db73008e2b30a7f4793eb9955fba481", null ],
    [ "WaitForSemaphore", "classVFoundation_1_1VSemaphore.html#a0827d21e7a4f906e8a5088d6a5a7dbbc", null ],
    [ "kClassName", "classVFoundation_1_1VSemaphore.html#a5d5bc65ce7e43c8fecc06d7d698a8b4a", null ],
    [ "ms_theClass", "classVFoundation_1_1VSemaphore.html#ac0f5a302b89f8934f79b5ce8a9a43dee", null ]
];