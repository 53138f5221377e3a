var searchData=
[
  ['what_20the_20hot_20paths_20cost_0',['What the hot paths cost',['../md_docs_performance.html',1,'']]]
];
