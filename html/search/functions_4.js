var searchData=
[
  ['edgecount_0',['EdgeCount',['../classVFoundation_1_1VGraph.html#a27b1e7d6d437db6105524d0d9014da34',1,'VFoundation::VGraph']]],
  ['edgeid_1',['EdgeID',['../classVFoundation_1_1VGraphEdge.html#a44b9e42630414de56d3709f8f4cac939',1,'VFoundation::VGraphEdge']]],
  ['edges_2',['Edges',['../classVFoundation_1_1VGraph.html#aab4be9cb0c9c77260d538bdca6f1ca67',1,'VFoundation::VGraph::Edges() noexcept'],['../classVFoundation_1_1VGraph.html#af69f7a932736df7a400a176931f0232d',1,'VFoundation::VGraph::Edges() const noexcept']]],
  ['elementatindex_3',['ElementAtIndex',['../classVFoundation_1_1VFloatVector.html#a1386072aa2612d4e14285dae67140af9',1,'VFoundation::VFloatVector']]],
  ['elements_4',['Elements',['../classVFoundation_1_1VFloatVector.html#ab1c20385b0b92fddde98d37c90e53bed',1,'VFoundation::VFloatVector::Elements() noexcept'],['../classVFoundation_1_1VFloatVector.html#ab8365c8a0760bd380bf12275ed96b584',1,'VFoundation::VFloatVector::Elements() const noexcept']]],
  ['emptystring_5',['EmptyString',['../classVFoundation_1_1VString.html#ab2d367b6b82bb3d6679e45b2fe99afd4',1,'VFoundation::VString']]],
  ['end_6',['End',['../classVFoundation_1_1VNotificationTuple.html#a7c302c1f16f328e00ec942d7c81d784c',1,'VFoundation::VNotificationTuple::End()'],['../structVFoundation_1_1TInterval.html#aec85a08fd46c3bc3168ad150e44fdb78',1,'VFoundation::TInterval::End()'],['../classVFoundation_1_1VRange.html#aec85a08fd46c3bc3168ad150e44fdb78',1,'VFoundation::VRange::End()'],['../classVFoundation_1_1VTimeRange.html#aec85a08fd46c3bc3168ad150e44fdb78',1,'VFoundation::VTimeRange::End()']]],
  ['endinchild_7',['EndInChild',['../classVFoundation_1_1VMessageCenterJob.html#ab783b5ed326fc7b751d6dd637cbf1052',1,'VFoundation::VMessageCenterJob']]],
  ['endloggingcontext_8',['EndLoggingContext',['../classVFoundation_1_1VLog.html#a5ecb6c246f9c133996e448d4124bf029',1,'VFoundation::VLog']]],
  ['endserver_9',['EndServer',['../classVFoundation_1_1VJobServer.html#ac6a9ecedb0eb579e07194f923cd31bca',1,'VFoundation::VJobServer']]],
  ['endthread_10',['EndThread',['../classVFoundation_1_1VThread.html#a13df1f87cb37414ee521f7b972e3a975',1,'VFoundation::VThread']]],
  ['endtime_11',['EndTime',['../classVFoundation_1_1VJob.html#ad9db24cf86bbe577605e82fed9084483',1,'VFoundation::VJob']]],
  ['entercriticalsection_12',['EnterCriticalSection',['../classVFoundation_1_1VCriticalSection.html#ab6c3ac9863197366039daeee106c921e',1,'VFoundation::VCriticalSection']]],
  ['enterlock_13',['EnterLock',['../classVFoundation_1_1VObjectContainer.html#a8c31175ac49f6d011a9b41e08c4017b2',1,'VFoundation::VObjectContainer']]],
  ['eof_14',['Eof',['../classVFoundation_1_1IAIFile.html#a69b87dc2dd08d562557338657f73d1b6',1,'VFoundation::IAIFile::Eof()'],['../classVFoundation_1_1VAIFile.html#a34ff2ca753bb23b62c201b0eb25fcb66',1,'VFoundation::VAIFile::Eof()']]],
  ['eventid_15',['EventID',['../classVFoundation_1_1VEvent.html#ae96dde690d479d4329d4f32636b8ea6e',1,'VFoundation::VEvent']]],
  ['eventidtotext_16',['EventIDToText',['../classVFoundation_1_1VEvent.html#a9875687c0f9f46d138513c5728c08ca1',1,'VFoundation::VEvent']]],
  ['exceptionhasoccured_17',['ExceptionHasOccured',['../classVFoundation_1_1VExceptionManager.html#a52062ade63a0babf712d0dbac8486eea',1,'VFoundation::VExceptionManager']]],
  ['exchange_18',['Exchange',['../classVFoundation_1_1VObjectRef.html#a6a95de04d27adbe5373eac8578e2c8bb',1,'VFoundation::VObjectRef']]],
  ['existing_19',['Existing',['../classVFoundation_1_1VClass.html#ab12d406b5526c9e96ac82258ac7057db',1,'VFoundation::VClass']]]
];
