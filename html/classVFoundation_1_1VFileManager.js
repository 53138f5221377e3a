var classVFoundation_1_1VFileManager =
[
    [ "VFileManager", "classVFoundation_1_1VFileManager.html#a285a14ef45a17ac2a0a9d3d9f50e8f66", null ],
    [ "VFileManager", "classVFoundation_1_1VFileManager.html#a91d03430780bedd329bd3988efb1016a", null ],
    [ "~VFileManager", "classVFoundation_1_1VFileManager.html#aa2e9606f71598af63d6fac3db0e268d6", null ],
    [ "ContentsAtPath", "classVFoundation_1_1VFileManager.html#ac2b7a289a8d5e0193b1e7ceaa1cd4f91", null ],
    [ "DefaultManager", "classVFoundation_1_1VFileManager.html#a14b7e61b3885475e98cc1ffa3e623924", null ],
    [ "DeleteDefaultManager", "classVFoundation_1_1VFileManager.html#a1d9de639b6f64892ecd91647a81d06e9", null ],
    [ "FileExistsAtPath", "classVFoundation_1_1VFileManager.html#a336ba32623c17256742cdb39021b8689", null ],
    [ "HostFileSystemPathComponentSeparator", "classVFoundation_1_1VFileManager.html#a5a5542c78e8009fe19f476dc5460020e", null ],
    [ "InitializeClass", "classVFoundation_1_1VFileManager.html#aa73840f087525e29696b8109060ac084", null ],
    [ "MakePathUseHostSeparator", "classVFoundation_1_1VFileManager.html#ad57c3ab04413194e7a7766e7ff071b5d", null ],
    [ "New", "classVFoundation_1_1VFileManager.html#af51cd7b40712a339f36bbcf7accf61fe", null ],
    [ "operator=", "classVFoundation_1_1VFileManager.html#a5939e99b305f6704ab6a22a97e6743f7", null ],
    [ "UninitializeClass", "classVFoundation_1_1VFileManager.html#a86b126c52427dfb612b1f361684d4650", null ],
    [ "vfc_fopen", "classVFoundation_1_1VFileManager.html#a09ddf5bab93454944ef416cf7cccdfa0", null ],
    [ "vfc_fopen", "classVFoundation_1_1VFileManager.html#ab65b0243d5879726189ead1ab88472c3", null ],
    [ "kClassName", "classVFoundation_1_1VFileManager.html#a88702ee1043973b3259c4ff2252a326c", null ],
    [ "ms_defaultManager", "classVFoundation_1_1VFileManager.html#a510c3d7201cc2783f3a8a7f078dff792", null ],
    [ "ms_theClass", "classVFoundation_1_1VFileManager.html#ac743afa30dd4791a9c2641b7e5811288", null ]
];