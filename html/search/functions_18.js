var searchData=
[
  ['y_0',['Y',['../classVFoundation_1_1VFloatVectorMapXY.html#a1182f6dae741d2c6ce5e8dbd2528f13d',1,'VFoundation::VFloatVectorMapXY']]]
];
