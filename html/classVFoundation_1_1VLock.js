var classVFoundation_1_1VLock =
[
    [ "VLock", "classVFoundation_1_1VLock.html#a86fd8a0801410ee7b36c9d49e25c5916", null ],
    [ "VLock", "classVFoundation_1_1VLock.html#a28672dba23bf6faf6d0966f63656e44a", null ],
    [ "~VLock", "classVFoundation_1_1VLock.html#acf2d1029a86a91686797d8da0f284742", null ],
    [ "IsFree", "classVFoundation_1_1VLock.html#a9e34145fe5b16a0b5c9bf7d1077a72d3", null ],
    [ "IsLocked", "classVFoundation_1_1VLock.html#a583a3a726905c14acef8f7d51ae455a4", null ],
    [ "New", "classVFoundation_1_1VLock.html#a149dda3c12ab771e38ca2fdc090227ea", null ],
    [ "operator=", "classVFoundation_1_1VLock.html#a626264eea4be2ca4a9f653754e425bde", null ],
    [ "TryLock", "classVFoundation_1_1VLock.html#a5f50922eb99879ac2c33e8d319a8a78f", null ],
    [ "Unlock", "classVFoundation_1_1VLock.html#a2f6bec4b036ce6516fbf6e28c6032394", null ],
    [ "kClassName", "classVFoundation_1_1VLock.html#a4c4c88684c47be956e571c73fe26f3fe", null ],
    [ "ms_theClass", "classVFoundation_1_1VLock.html#aae7a76f930e23fd6703d5a7dd1449ac1", null ]
];