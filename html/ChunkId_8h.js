var ChunkId_8h =
[
    [ "ChunkId", "ChunkId_8h.html#ac1a653ddca5de2e27a9c3251466c9041", null ]
];