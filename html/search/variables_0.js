var searchData=
[
  ['alpha_0',['alpha',['../structVFoundation_1_1SColour.html#a047b83ee8242eba14a84cd7f5a8bea58',1,'VFoundation::SColour']]]
];
