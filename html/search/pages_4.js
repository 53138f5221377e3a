var searchData=
[
  ['security_20of_20the_20launcher_0',['Security of the launcher',['../md_docs_security.html',1,'']]]
];
