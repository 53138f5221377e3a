var searchData=
[
  ['architecture_2emd_0',['architecture.md',['../architecture_8md.html',1,'']]],
  ['archive_2emd_1',['archive.md',['../archive_8md.html',1,'']]]
];
