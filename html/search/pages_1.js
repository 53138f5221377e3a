var searchData=
[
  ['changelog_0',['Changelog',['../md_CHANGELOG.html',1,'']]],
  ['contributing_1',['Contributing',['../md_CONTRIBUTING.html',1,'']]]
];
