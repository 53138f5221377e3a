var searchData=
[
  ['query_0',['Query',['../classVFoundation_1_1VURL.html#a64a55c6c832da4f2a51cd13edeff0465',1,'VFoundation::VURL']]],
  ['queuedtime_1',['QueuedTime',['../classVFoundation_1_1VJob.html#a191e34167050cc6c0fb4264a3a3bf383',1,'VFoundation::VJob']]]
];
