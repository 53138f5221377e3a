var searchData=
[
  ['edgearray_0',['EdgeArray',['../classVFoundation_1_1VGraph.html#acb7dd349056ab0f85c61a47031eed238',1,'VFoundation::VGraph']]]
];
