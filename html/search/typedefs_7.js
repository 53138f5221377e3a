var searchData=
[
  ['threadid_0',['ThreadID',['../classVFoundation_1_1VThread.html#a0e93b2cfc9d52a214713a8d4cf8a585e',1,'VFoundation::VThread']]]
];
