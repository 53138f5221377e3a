var searchData=
[
  ['heapblock_2eh_0',['HeapBlock.h',['../HeapBlock_8h.html',1,'']]]
];
