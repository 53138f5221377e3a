var searchData=
[
  ['architecture_0',['Architecture',['../md_docs_architecture.html',1,'']]]
];
