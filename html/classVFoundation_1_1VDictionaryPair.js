var classVFoundation_1_1VDictionaryPair =
[
    [ "VDictionaryPair", "classVFoundation_1_1VDictionaryPair.html#aee12af476e6db58e75fe826beb2472a6", null ],
    [ "VDictionaryPair", "classVFoundation_1_1VDictionaryPair.html#a7b630e5378bec2462faa8ebfa8b90ad7", null ],
    [ "~VDictionaryPair", "classVFoundation_1_1VDictionaryPair.html#afbd3ff2044a02405b5668ad766311ce9", null ],
    [ "Key", "classVFoundation_1_1VDictionaryPair.html#af31bbec7dafec3272cf8bb7a53a63aab", null ],
    [ "New", "classVFoundation_1_1VDictionaryPair.html#a7e6f893b3684d6f05376cc6e269f541a", null ],
    [ "operator=", "classVFoundation_1_1VDictionaryPair.html#a8681a9f2e32e33dd280c9b5193c9737d", null ],
    [ "SerializeAsXML", "classVFoundation_1_1VDictionaryPair.html#a389c4f882b8d9153c5b88187064a7a4a", null ],
    [ "SetKey", "classVFoundation_1_1VDictionaryPair.html#a441d0fa6cf2d520359f4106644abd523", null ],
    [ "SetValue", "classVFoundation_1_1VDictionaryPair.html#a28545603cee687a6f55e8ca759dd23c9", null ],
    [ "Value", "classVFoundation_1_1VDictionaryPair.html#a0426d8df88037273020ee1064966b714", null ],
    [ "kClassName", "classVFoundation_1_1VDictionaryPair.html#a4052bf32d9fb3b81febe2aa0e68789ec", null ],
    [ "ms_theClass", "classVFoundation_1_1VDictionaryPair.html#ab8b2d164e23ef47d4b9bd3730815189e", null ]
];