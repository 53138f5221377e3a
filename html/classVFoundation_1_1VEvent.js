var classVFoundation_1_1VEvent =
[
    [ "VEvent", "classVFoundation_1_1VEvent.html#a776561bd217c944e668c0c547a28b8ea", null ],
    [ "VEvent", "classVFoundation_1_1VEvent.html#aec8dc41150056099c08beafc9484d17d", null ],
    [ "~VEvent", "classVFoundation_1_1VEvent.html#a490c4949a6708cc43fba5fbcf5482981", null ],
    [ "EventID", "classVFoundation_1_1VEvent.html#ae96dde690d479d4329d4f32636b8ea6e", null ],
    [ "EventIDToText", "classVFoundation_1_1VEvent.html#a9875687c0f9f46d138513c5728c08ca1", null ],
    [ "GetEventID", "classVFoundation_1_1VEvent.html#a9429d0fc6a91fce8d0b81976ecbff67a", null ],
    [ "InitializeClass", "classVFoundation_1_1VEvent.html#a1f6dffa099f2c5dd8d18ad2735d32b38", null ],
    [ "New", "classVFoundation_1_1VEvent.html#a6ecc524ad3bc938cb93138698cccc91d", null ],
    [ "operator=", "classVFoundation_1_1VEvent.html#a46b0406ea9062fb15650bbe2dff5362b", null ],
    [ "SerializeAsXML", "classVFoundation_1_1VEvent.html#a93405d25220867c7f3ca821d95a316dd", null ],
    [ "SetEventID", "classVFoundation_1_1VEvent.html#a9d5d8b71bca7754d4565c9a8418c3555", null ],
    [ "SetSource", "classVFoundation_1_1VEvent.html#ab54dad3f0ecbc28ca3d836a6911b964c", null ],
    [ "SetTime", "classVFoundation_1_1VEvent.html#a33d9b7befdfdd364a244c57f7148d650", null ],
    [ "Source", "classVFoundation_1_1VEvent.html#ad5dafed7391e7c006616294c22d3c8e0", null ],
    [ "TextToEventID", "classVFoundation_1_1VEvent.html#a06038bff1c69cde4b74ec890b7450717", null ],
    [ "Time", "classVFoundation_1_1VEvent.html#a3e962cb33a030408b286bddc7e39d752", null ],
    [ "UninitializeClass", "classVFoundation_1_1VEvent.html#a515c763891f4813b91511febbe7d487d", null ],
    [ "kClassName", "classVFoundation_1_1VEvent.html#a6532975775541caf6db060dabb694351", null ],
    [ "kNoEventID", "classVFoundation_1_1VEvent.html#ab7d23933035d376c391eb7322215c357", null ],
    [ "ms_theClass", "classVFoundation_1_1VEvent.html#a0f6ae9dd5a133165e2bc595932975292", null ]
];