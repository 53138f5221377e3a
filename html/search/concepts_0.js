var searchData=
[
  ['filetype_0',['FileType',['../conceptVFoundation_1_1FileType.html',1,'VFoundation']]]
];
