var searchData=
[
  ['namedcolours_2eh_0',['NamedColours.h',['../NamedColours_8h.html',1,'']]],
  ['narrowcast_2eh_1',['NarrowCast.h',['../NarrowCast_8h.html',1,'']]]
];
