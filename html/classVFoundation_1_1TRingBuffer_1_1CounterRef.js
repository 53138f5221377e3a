var classVFoundation_1_1TRingBuffer_1_1CounterRef =
[
    [ "CounterRef", "classVFoundation_1_1TRingBuffer_1_1CounterRef.html#a5531e0299b484ee63920e3c3d995070b", null ],
    [ "Cursor", "classVFoundation_1_1TRingBuffer_1_1CounterRef.html#afb9c6fa80b5d332d5bf34823c5c5e07a", null ],
    [ "operator std::int32_t", "classVFoundation_1_1TRingBuffer_1_1CounterRef.html#a2eafd88c921f1e801187137166dfa477", null ],
    [ "operator=", "classVFoundation_1_1TRingBuffer_1_1CounterRef.html#a1582057c53b8a6a6b2175aee3a976ba4", null ],
    [ "SetCursor", "classVFoundation_1_1TRingBuffer_1_1CounterRef.html#aebe851b252798f12fa3fcb7cff24593e", null ]
];