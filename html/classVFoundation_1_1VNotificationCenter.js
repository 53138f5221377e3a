var classVFoundation_1_1VNotificationCenter =
[
    [ "Callback", "classVFoundation_1_1VNotificationCenter.html#ad32c3bf58b14ce1ca1c92b37d75f665c", null ],
    [ "VNotificationCenter", "classVFoundation_1_1VNotificationCenter.html#a3ff8db6fbd9b07d0721e91a11d490f49", null ],
    [ "VNotificationCenter", "classVFoundation_1_1VNotificationCenter.html#a5e2c291530ea98d06a485c849e53c774", null ],
    [ "~VNotificationCenter", "classVFoundation_1_1VNotificationCenter.html#ab3271f6f2b615504a8605f49a9ca4044", null ],
    [ "AddObserver", "classVFoundation_1_1VNotificationCenter.html#aaf35954e7e1d5222b0bdc48c8af615df", null ],
    [ "DefaultCenter", "classVFoundation_1_1VNotificationCenter.html#a595876961052e19d3bcebeb26947c6a4", null ],
    [ "DeleteDefaultCenter", "classVFoundation_1_1VNotificationCenter.html#ad95db08d8f8fe479043d58cdc6e13e33", null ],
    [ "InitializeClass", "classVFoundation_1_1VNotificationCenter.html#a0508e2121ab3e6412616fa90344e4957", null ],
    [ "New", "classVFoundation_1_1VNotificationCenter.html#aa656117565cfe00074ecd54e670cae8b", null ],
    [ "operator=", "classVFoundation_1_1VNotificationCenter.html#a8dc60bfaa99ecb7d5db982a46c174ca4", null ],
    [ "PostNotification", "classVFoundation_1_1VNotificationCenter.html#abae1e841595079991fcb8e219ed6610c", null ],
    [ "RemoveObserver", "classVFoundation_1_1VNotificationCenter.html#ad4d726dad1b4a7edc33782a765d26658", null ],
    [ "UninitializeClass", "classVFoundation_1_1VNotificationCenter.html#a7a737c553c5a5a5ff9bdde0588914e4b", null ],
    [ "kClassName", "classVFoundation_1_1VNotificationCenter.html#a5a56425395fc02d3c9acc8f40601a847", null ],
    [ "ms_defaultNotificationCenter", "classVFoundation_1_1VNotificationCenter.html#a802e7b7e1a2374dc45bcc294f4c83bcc", null ],
    [ "ms_theClass", "classVFoundation_1_1VNotificationCenter.html#a1496c7cd0757698bb1c24ce50d28ebf2", null ]
];