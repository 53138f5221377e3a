var classVFoundation_1_1VFileInfo =
[
    [ "VFileInfo", "classVFoundation_1_1VFileInfo.html#af0c67d37ba9d99296b62676ceb1bb6f7", null ],
    [ "VFileInfo", "classVFoundation_1_1VFileInfo.html#ae7536db3f986fc2cc06d82aa171cb433", null ],
    [ "Flag", "classVFoundation_1_1VFileInfo.html#a77d8565cfe334411f940a38624ab990a", null ],
    [ "InitializeClass", "classVFoundation_1_1VFileInfo.html#a0c74a30f6c67e961373246280c5426e5", null ],
    [ "New", "classVFoundation_1_1VFileInfo.html#ac80a90d86078275e41aa876aaf30bccf", null ],
    [ "NewFileInfo", "classVFoundation_1_1VFileInfo.html#a28cc91e96bff07d16ccfd8f55b6109ca", null ],
    [ "operator=", "classVFoundation_1_1VFileInfo.html#a06442ffd7ca51d55e8218e22fa42ec48", null ],
    [ "Path", "classVFoundation_1_1VFileInfo.html#a97e704bde187fc1ab0837bea44cfa6b0", null ],
    [ "Release", "classVFoundation_1_1VFileInfo.html#a1672e80505b5c70deb332423cd518595", null ],
    [ "ReleaseAllRecycledFileInfos", "classVFoundation_1_1VFileInfo.html#adac71b62be8f5050fdc763ce522bd93c", null ],
    [ "Serialize", "classVFoundation_1_1VFileInfo.html#a34d7aa282281d6c7b18359589168b2bb", null ],
    [ "SetFlag", "classVFoundation_1_1VFileInfo.html#a442ce67b5dd1e5e43460302deb174872", null ],
    [ "SetPath", "classVFoundation_1_1VFileInfo.html#ab818fd4d2d73714af358ff1a1f333740", null ],
    [ "UninitializeClass", "classVFoundation_1_1VFileInfo.html#a747eee49629a051d2771d569e4c76c24", null ],
    [ "kClassName", "classVFoundation_1_1VFileInfo.html#a9f9cdfe55c682727c39ac20e49a3ca4c", null ],
    [ "kPathSize", "classVFoundation_1_1VFileInfo.html#aabe19c08fa86286c4c909dce0dbd51d5", null ],
    [ "kPoolCapacity", "classVFoundation_1_1VFileInfo.html#a1f50d77cf0f3405df261d3b1e66062c6", null ],
    [ "ms_bRecyclingEnabled", "classVFoundation_1_1VFileInfo.html#a35a65a7184499acf41c78ef62395a9a6", null ],
    [ "ms_recycledFileInfos", "classVFoundation_1_1VFileInfo.html#a2ade6085203371cc74fe308663b8f852", null ],
    [ "ms_theClass", "classVFoundation_1_1VFileInfo.html#a8fb960783aa33eb9182bc45e9e92f1b1", null ]
];