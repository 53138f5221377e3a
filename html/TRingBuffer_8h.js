var TRingBuffer_8h =
[
    [ "VFoundation::TRingBuffer< T, Policy, Atomic, AtomicRef >", "classVFoundation_1_1TRingBuffer.html", "classVFoundation_1_1TRingBuffer" ],
    [ "VFoundation::TRingBuffer< T, Policy, Atomic, AtomicRef >::CounterRef", "classVFoundation_1_1TRingBuffer_1_1CounterRef.html", "classVFoundation_1_1TRingBuffer_1_1CounterRef" ]
];