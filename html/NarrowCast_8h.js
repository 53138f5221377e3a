var NarrowCast_8h =
[
    [ "narrow_cast", "NarrowCast_8h.html#a82bcdebede78d6e5f0fdcbd2699ea7d1", null ]
];