var searchData=
[
  ['object_20xml_0',['Object XML',['../md_docs_formats_object_xml.html',1,'']]]
];
