var searchData=
[
  ['readme_2emd_0',['README.md',['../README_8md.html',1,'']]],
  ['registered_2eh_1',['Registered.h',['../Registered_8h.html',1,'']]]
];
