var NamedColours_8h =
[
    [ "VFOUNDATION_NAMED_COLOURS", "NamedColours_8h.html#a15c07174133bcbec03ffb7fd848eaa93", null ]
];