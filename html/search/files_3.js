var searchData=
[
  ['filetypes_2eh_0',['FileTypes.h',['../FileTypes_8h.html',1,'']]]
];
