var classVFoundation_1_1VObjectArrayTmpl =
[
    [ "VObjectArrayTmpl", "classVFoundation_1_1VObjectArrayTmpl.html#ac70fe5a8d13a9f44bde70fd64aaec6bf", null ],
    [ "VObjectArrayTmpl", "classVFoundation_1_1VObjectArrayTmpl.html#acf56042eadeee0ce70a7585a685d4541", null ],
    [ "AddObjectsTyped", "classVFoundation_1_1VObjectArrayTmpl.html#acf006808764ebc5fc08a8ac27270b77a", null ],
    [ "AddObjectTyped", "classVFoundation_1_1VObjectArrayTmpl.html#a5ba95584b7669b918b6d3284cb1a38d9", null ],
    [ "DeepCopy", "classVFoundation_1_1VObjectArrayTmpl.html#a12dff21f5c36eb5889aead7b5c0e5a34", null ],
    [ "IndexOfEquivalentObjectTyped", "classVFoundation_1_1VObjectArrayTmpl.html#a77a63c6c466a591d139697673d652800", null ],
    [ "InsertObjectAtIndexTyped", "classVFoundation_1_1VObjectArrayTmpl.html#aceb4abe299a57d2531171e3c9e42405d", null ],
    [ "New", "classVFoundation_1_1VObjectArrayTmpl.html#a2e9ec0f60214a5c465ac4f1ff4e2683f", null ],
    [ "ObjectAtIndexTyped", "classVFoundation_1_1VObjectArrayTmpl.html#a542327dd1fbdc574b790a53f1400702b", null ],
    [ "PooledType", "classVFoundation_1_1VObjectArrayTmpl.html#a4b26c3c2f53f66e755b8a5cd0d60ff53", null ],
    [ "RemoveObjectTyped", "classVFoundation_1_1VObjectArrayTmpl.html#acdbae9b3a3076eeaf6a7f13247c83eb4", null ],
    [ "ReplaceObjectAtIndexTyped", "classVFoundation_1_1VObjectArrayTmpl.html#ac1d5011cba496a3e74124e4b0464fc95", null ]
];