var searchData=
[
  ['object_2dxml_2emd_0',['object-xml.md',['../object-xml_8md.html',1,'']]],
  ['oddities_2emd_1',['oddities.md',['../oddities_8md.html',1,'']]]
];
