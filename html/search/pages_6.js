var searchData=
[
  ['versions_0',['Versions',['../md_docs_versions.html',1,'']]],
  ['vfoundation_20and_20the_20quillmark_20launcher_1',['VFoundation and the Quillmark launcher',['../index.html',1,'']]]
];
