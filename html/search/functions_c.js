var searchData=
[
  ['makepathusehostseparator_0',['MakePathUseHostSeparator',['../classVFoundation_1_1VFileManager.html#ad57c3ab04413194e7a7766e7ff071b5d',1,'VFoundation::VFileManager']]],
  ['matches_1',['Matches',['../classVFoundation_1_1VConnectionTuple.html#a2c76b81f291cfe640fcbe4a272dd477e',1,'VFoundation::VConnectionTuple::Matches(VMessenger const *target, int targetId) const noexcept'],['../classVFoundation_1_1VConnectionTuple.html#a39346ba8e0397024200e2556a2d73f60',1,'VFoundation::VConnectionTuple::Matches(VMessenger const *source, int sourceId, VMessenger const *target, int targetId) const noexcept'],['../classVFoundation_1_1VMessage.html#a03c5d50d8bf5df6ff253a23274ed7d77',1,'VFoundation::VMessage::Matches()'],['../classVFoundation_1_1VNotificationTuple.html#a3baed14232f534652a1d4cc44e791ea6',1,'VFoundation::VNotificationTuple::Matches()']]],
  ['maximum_2',['Maximum',['../classVFoundation_1_1VFloatVector.html#a1f72d7763f6f8e227ffe56efcea53fac',1,'VFoundation::VFloatVector']]],
  ['maxpoolsize_3',['MaxPoolSize',['../classVFoundation_1_1IVInstancePool.html#a186be2b1e54df965e30c800649a05403',1,'VFoundation::IVInstancePool']]],
  ['maxsignals_4',['MaxSignals',['../classVFoundation_1_1VSemaphore.html#a43fad9a2b362743e2c5b756dc2f3c10a',1,'VFoundation::VSemaphore']]],
  ['maxsimultaneous_5',['MaxSimultaneous',['../classVFoundation_1_1VClass.html#a50eccffbf26e18e848ada07e69839611',1,'VFoundation::VClass']]],
  ['membersloaded_6',['MembersLoaded',['../classVFoundation_1_1VRange.html#a60cd546d78ec1de2c003591a487323ce',1,'VFoundation::VRange::MembersLoaded()'],['../classVFoundation_1_1VTimeRange.html#ad13d056154db02ac5f66419c666f968e',1,'VFoundation::VTimeRange::MembersLoaded()'],['../classVFoundation_1_1TSavedObject.html#ab928231e0c9ab4df454e3d0f8934f343',1,'VFoundation::TSavedObject::MembersLoaded()']]],
  ['mergewithgraph_7',['MergeWithGraph',['../classVFoundation_1_1VGraph.html#a74d8a92b89e7af704dfff613bba81c37',1,'VFoundation::VGraph']]],
  ['message_8',['Message',['../classVFoundation_1_1VCommandTuple.html#af37a73c2f22f22f5abd6acbab29af4ca',1,'VFoundation::VCommandTuple']]],
  ['messagedelay_9',['MessageDelay',['../classVFoundation_1_1VCommandDelayer.html#ae8b25bdccebca674e7227929b2b439dd',1,'VFoundation::VCommandDelayer::MessageDelay()'],['../classVFoundation_1_1VMessageCenter.html#aa5a5a1739890bb4a82a1e9fbf8012b66',1,'VFoundation::VMessageCenter::MessageDelay()']]],
  ['messageid_10',['MessageID',['../classVFoundation_1_1VMessage.html#a030149e2147d1e4cd3c3841a2d4edb66',1,'VFoundation::VMessage']]],
  ['messagesend_11',['MessageSend',['../classVFoundation_1_1VConnectionTuple.html#ae522168c4206a0394eff6440f638a80a',1,'VFoundation::VConnectionTuple']]],
  ['minimum_12',['Minimum',['../classVFoundation_1_1VFloatVector.html#acb1f01b4fe67114260516e0e93e02241',1,'VFoundation::VFloatVector']]],
  ['mountpath_13',['MountPath',['../classVFoundation_1_1VDiskInfo.html#ae0635664028c8f5d7ad26969bdcb648f',1,'VFoundation::VDiskInfo']]],
  ['multiply_14',['Multiply',['../classVFoundation_1_1VFloatVector.html#a1b890720d97c3ddcb093c893b3210496',1,'VFoundation::VFloatVector']]]
];
