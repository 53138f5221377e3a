var searchData=
[
  ['tinterval_2eh_0',['TInterval.h',['../TInterval_8h.html',1,'']]],
  ['tools_2emd_1',['tools.md',['../tools_8md.html',1,'']]],
  ['trefcounted_2eh_2',['TRefCounted.h',['../TRefCounted_8h.html',1,'']]],
  ['tringbuffer_2eh_3',['TRingBuffer.h',['../TRingBuffer_8h.html',1,'']]],
  ['tsavedobject_2eh_4',['TSavedObject.h',['../TSavedObject_8h.html',1,'']]]
];
