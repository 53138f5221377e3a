var classVFoundation_1_1VTimeRange =
[
    [ "VTimeRange", "classVFoundation_1_1VTimeRange.html#a9a9609bac3be46f939e606d6b8e34e7e", null ],
    [ "VTimeRange", "classVFoundation_1_1VTimeRange.html#a2a3c022d90019b2b1dcf6b3fb9f2b1ce", null ],
    [ "VTimeRange", "classVFoundation_1_1VTimeRange.html#a5eb692ab8b375ab64b7c0e175e36cf32", null ],
    [ "VTimeRange", "classVFoundation_1_1VTimeRange.html#a5c3ce11c8030533b026cb0f679af5b04", null ],
    [ "Contains", "classVFoundation_1_1VTimeRange.html#acbc5b817e729e67dc3c618185b1f2dff", null ],
    [ "Duration", "classVFoundation_1_1VTimeRange.html#a851dca230c6e2fea1f7c8fb529a78e83", null ],
    [ "End", "classVFoundation_1_1VTimeRange.html#aec85a08fd46c3bc3168ad150e44fdb78", null ],
    [ "Intersection", "classVFoundation_1_1VTimeRange.html#a1ce5b640632fd663737d01864f44c7d4", null ],
    [ "IsEmpty", "classVFoundation_1_1VTimeRange.html#af6870607795467690d241b365443ca13", null ],
    [ "MembersLoaded", "classVFoundation_1_1VTimeRange.html#ad13d056154db02ac5f66419c666f968e", null ],
    [ "New", "classVFoundation_1_1VTimeRange.html#a70f9adeae31549cd2a5549bcd2a504cc", null ],
    [ "operator=", "classVFoundation_1_1VTimeRange.html#ad31024c1b87127b30c731d2b7ae783b1", null ],
    [ "operator==", "classVFoundation_1_1VTimeRange.html#a24865eda9464284e420f52dea5ecc48d", null ],
    [ "Set", "classVFoundation_1_1VTimeRange.html#a4551224a4bc540d01f7c99eb73d793cf", null ],
    [ "Start", "classVFoundation_1_1VTimeRange.html#a312aa5a57510ea0c951679e8f29bdafa", null ],
    [ "Union", "classVFoundation_1_1VTimeRange.html#ac27e99baaae8547a5b59a556ac466515", null ],
    [ "TSavedObject< VTimeRange >", "classVFoundation_1_1VTimeRange.html#a842f8fc7c600692289ad6f47b3f42a9e", null ],
    [ "kClassName", "classVFoundation_1_1VTimeRange.html#a498844120c1d4f9c3aff9ea9aa600f77", null ],
    [ "ms_theClass", "classVFoundation_1_1VTimeRange.html#aab7be00fca61d9f4bb8118a3c69cc550", null ]
];