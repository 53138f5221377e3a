var searchData=
[
  ['key_0',['Key',['../classVFoundation_1_1VDictionaryPair.html#af31bbec7dafec3272cf8bb7a53a63aab',1,'VFoundation::VDictionaryPair']]],
  ['keys_1',['Keys',['../classVFoundation_1_1VDictionary.html#a625e40255813abdd19735df96a5c9c3f',1,'VFoundation::VDictionary']]],
  ['killalljobs_2',['KillAllJobs',['../classVFoundation_1_1VJobServer.html#aebc6da6e69782f204f0d4775e563434d',1,'VFoundation::VJobServer']]],
  ['kind_3',['Kind',['../classVFoundation_1_1VDiskInfo.html#a2851386d4dca44f3ba111e5f5ce23290',1,'VFoundation::VDiskInfo::Kind()'],['../classVFoundation_1_1VCommandTuple.html#a60166549a1a739dd8716bc0b31048e0c',1,'VFoundation::VCommandTuple::Kind()']]]
];
