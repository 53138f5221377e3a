var searchData=
[
  ['blockfile_0',['BlockFile',['../classVFoundation_1_1BlockFile.html',1,'VFoundation']]]
];
