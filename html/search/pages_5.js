var searchData=
[
  ['the_20archive_0',['The archive',['../md_docs_formats_archive.html',1,'']]],
  ['the_20chunked_20binary_20file_1',['The chunked binary file',['../md_docs_formats_chunked_file.html',1,'']]],
  ['tools_2',['Tools',['../md_docs_tools.html',1,'']]]
];
