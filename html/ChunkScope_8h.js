var ChunkScope_8h =
[
    [ "VFoundation::ChunkScope", "classVFoundation_1_1ChunkScope.html", "classVFoundation_1_1ChunkScope" ]
];