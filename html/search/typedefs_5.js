var searchData=
[
  ['nodearray_0',['NodeArray',['../classVFoundation_1_1VGraph.html#a01af26e64d7a2cfd1b759b0c2176336a',1,'VFoundation::VGraph']]]
];
