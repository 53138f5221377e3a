var searchData=
[
  ['performance_2emd_0',['performance.md',['../performance_8md.html',1,'']]]
];
