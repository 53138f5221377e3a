var searchData=
[
  ['left_0',['left',['../structVFoundation_1_1SRect.html#a0d5a2335b20d42f7d3e88ebc3b9811e9',1,'VFoundation::SRect']]]
];
