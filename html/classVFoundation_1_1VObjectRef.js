var classVFoundation_1_1VObjectRef =
[
    [ "VObjectRef", "classVFoundation_1_1VObjectRef.html#a72fe4dc03276aa06a0dd34c8a0269cca", null ],
    [ "VObjectRef", "classVFoundation_1_1VObjectRef.html#a22811ebcff4a63b2fc1f7a0dc32285f8", null ],
    [ "VObjectRef", "classVFoundation_1_1VObjectRef.html#a113198191dfe6e6304f31a7fa24d88c7", null ],
    [ "VObjectRef", "classVFoundation_1_1VObjectRef.html#a321151894b36b8f43d61512991c35b6a", null ],
    [ "~VObjectRef", "classVFoundation_1_1VObjectRef.html#a74af341bf600145ace9e35d644e3c073", null ],
    [ "Adopt", "classVFoundation_1_1VObjectRef.html#a4384acbf09211ae20bc2c2a2f37790b5", null ],
    [ "Allocate", "classVFoundation_1_1VObjectRef.html#a76c30577cf183812d456da5b1e52ac8b", null ],
    [ "Detach", "classVFoundation_1_1VObjectRef.html#a7e400a6b009029e5478c46249e10d8bc", null ],
    [ "Exchange", "classVFoundation_1_1VObjectRef.html#a6a95de04d27adbe5373eac8578e2c8bb", null ],
    [ "Get", "classVFoundation_1_1VObjectRef.html#a85d2a7c84b8f6e59deaf1ec73e8d1ead", null ],
    [ "operator bool", "classVFoundation_1_1VObjectRef.html#a21fc3d89befda21d60f7bd301fe82328", null ],
    [ "operator*", "classVFoundation_1_1VObjectRef.html#a1f1899184f8723ad74b4b3db9f8fbcf8", null ],
    [ "operator->", "classVFoundation_1_1VObjectRef.html#a8416495798542ed2267b5682131bfea9", null ],
    [ "operator=", "classVFoundation_1_1VObjectRef.html#a4e0cb5311aa730eee62db29da228f364", null ],
    [ "operator=", "classVFoundation_1_1VObjectRef.html#a9d0368246c880bc9070a51f48b752c0d", null ]
];