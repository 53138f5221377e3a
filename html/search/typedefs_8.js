var searchData=
[
  ['vconnections_0',['VConnections',['../classVFoundation_1_1VMessenger.html#a7b9f8df17235dcb55f6d40bf5a07633d',1,'VFoundation::VMessenger']]],
  ['vconnectiontable_1',['VConnectionTable',['../classVFoundation_1_1VMessenger.html#ab7d9fc708adc37365025acc5f36e0dfa',1,'VFoundation::VMessenger']]]
];
