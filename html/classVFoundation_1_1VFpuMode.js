var classVFoundation_1_1VFpuMode =
[
    [ "RoundMode", "classVFoundation_1_1VFpuMode.html#aaedc08d7077452513dfc380d7ddf380f", [
      [ "kDownward", "classVFoundation_1_1VFpuMode.html#aaedc08d7077452513dfc380d7ddf380fa1c3ee67359e0751ae8bfa086f4cf09e4", null ],
      [ "kToNearest", "classVFoundation_1_1VFpuMode.html#aaedc08d7077452513dfc380d7ddf380fab149be58fb6039199a969584f2d25d71", null ],
      [ "kUpward", "classVFoundation_1_1VFpuMode.html#aaedc08d7077452513dfc380d7ddf380fa82db23a4829261210b91d90c70434b9c", null ],
      [ "kTowardZero", "classVFoundation_1_1VFpuMode.html#aaedc08d7077452513dfc380d7ddf380fa9a80e89d76141ac8729d60d547f49e2b", null ]
    ] ],
    [ "VFpuMode", "classVFoundation_1_1VFpuMode.html#acd5a2aa95e76559c624f97b8f5764721", null ],
    [ "VFpuMode", "classVFoundation_1_1VFpuMode.html#a3ec544f60c8637e47cabb43a92f8cf23", null ],
    [ "~VFpuMode", "classVFoundation_1_1VFpuMode.html#a9a57aa899a4ee6750ac66d995f99601c", null ],
    [ "operator=", "classVFoundation_1_1VFpuMode.html#a3280dd22f149e8225eaa14bb3354930a", null ]
];