var classVFoundation_1_1VNotificationTuple =
[
    [ "Callback", "classVFoundation_1_1VNotificationTuple.html#a6256e104bdb23fbac9d0e15868499fce", null ],
    [ "VNotificationTuple", "classVFoundation_1_1VNotificationTuple.html#a856d359b3fba8f8b27195a4247a5814c", null ],
    [ "VNotificationTuple", "classVFoundation_1_1VNotificationTuple.html#a5cf8bd97b05fe59be4afa4d3a7257bc9", null ],
    [ "~VNotificationTuple", "classVFoundation_1_1VNotificationTuple.html#a7bc1ae04ce1e1445596ec64a8c455b05", null ],
    [ "Deliver", "classVFoundation_1_1VNotificationTuple.html#aeca2257c52f7cf306d06afe0ab48369a", null ],
    [ "End", "classVFoundation_1_1VNotificationTuple.html#a7c302c1f16f328e00ec942d7c81d784c", null ],
    [ "InitializeClass", "classVFoundation_1_1VNotificationTuple.html#a5c05dadf7bfc95756b3d27ecc00cfadb", null ],
    [ "IsOf", "classVFoundation_1_1VNotificationTuple.html#a771b639206c60b35cf7f7269a0cab1df", null ],
    [ "Matches", "classVFoundation_1_1VNotificationTuple.html#a3baed14232f534652a1d4cc44e791ea6", null ],
    [ "New", "classVFoundation_1_1VNotificationTuple.html#a6e85e20180e3192981a9c8d6d235bf8e", null ],
    [ "operator=", "classVFoundation_1_1VNotificationTuple.html#a2ef2ee42aa49f51ee3683966d5f741c5", null ],
    [ "Set", "classVFoundation_1_1VNotificationTuple.html#a9f39ffb4dd7425ca788149266ae74d1e", null ],
    [ "UninitializeClass", "classVFoundation_1_1VNotificationTuple.html#a30e2420cf2d9960e8011d165627f5d67", null ],
    [ "kClassName", "classVFoundation_1_1VNotificationTuple.html#a0baf1809e7a74f157aaab7c39bb951d8", null ],
    [ "ms_theClass", "classVFoundation_1_1VNotificationTuple.html#a29211e09d4f05293d3bf4ec21b4df228", null ]
];