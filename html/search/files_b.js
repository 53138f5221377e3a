var searchData=
[
  ['scolour_2eh_0',['SColour.h',['../SColour_8h.html',1,'']]],
  ['security_2emd_1',['security.md',['../security_8md.html',1,'']]],
  ['spoint_2eh_2',['SPoint.h',['../SPoint_8h.html',1,'']]],
  ['srect_2eh_3',['SRect.h',['../SRect_8h.html',1,'']]],
  ['ssize_2eh_4',['SSize.h',['../SSize_8h.html',1,'']]],
  ['svalue_2eh_5',['SValue.h',['../SValue_8h.html',1,'']]]
];
