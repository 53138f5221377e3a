var searchData=
[
  ['heapblock_0',['HeapBlock',['../classVFoundation_1_1HeapBlock.html',1,'VFoundation']]]
];
