var searchData=
[
  ['chunkscope_0',['ChunkScope',['../classVFoundation_1_1ChunkScope.html',1,'VFoundation']]],
  ['cmdevent_1',['CmdEvent',['../classVFoundation_1_1CmdEvent.html',1,'VFoundation']]],
  ['context_2',['Context',['../classVFoundation_1_1VGarbageCan_1_1Context.html',1,'VFoundation::VGarbageCan']]],
  ['counterref_3',['CounterRef',['../classVFoundation_1_1TRingBuffer_1_1CounterRef.html',1,'VFoundation::TRingBuffer']]]
];
