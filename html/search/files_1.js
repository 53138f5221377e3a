var searchData=
[
  ['blockfile_2eh_0',['BlockFile.h',['../BlockFile_8h.html',1,'']]]
];
