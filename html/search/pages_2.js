var searchData=
[
  ['deliberate_20oddities_0',['Deliberate oddities',['../md_docs_oddities.html',1,'']]]
];
