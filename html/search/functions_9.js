var searchData=
[
  ['jobfailed_0',['JobFailed',['../classVFoundation_1_1IVJobDelegate.html#a887c2e297f602e4084a12652d8bdc268',1,'VFoundation::IVJobDelegate']]],
  ['jobprogress_1',['JobProgress',['../classVFoundation_1_1VMessageCenterJob.html#a6f9db645abadb09b0056eb2f487a17e3',1,'VFoundation::VMessageCenterJob::JobProgress()'],['../classVFoundation_1_1VJob.html#a5377cf4a5132dc9deff9cac5c4c601c5',1,'VFoundation::VJob::JobProgress()']]],
  ['jobqueued_2',['JobQueued',['../classVFoundation_1_1IVJobDelegate.html#a1f9e56240e7d687f9a6e0db0b23ba410',1,'VFoundation::IVJobDelegate']]],
  ['jobstarted_3',['JobStarted',['../classVFoundation_1_1IVJobDelegate.html#a846d7b02385555cc1dbcb9c79b2d04f5',1,'VFoundation::IVJobDelegate']]],
  ['jobsucceeded_4',['JobSucceeded',['../classVFoundation_1_1IVJobDelegate.html#a625eb10312e28bddc886c43c43e76c9d',1,'VFoundation::IVJobDelegate']]]
];
