var searchData=
[
  ['y_0',['y',['../structVFoundation_1_1SPoint.html#a9c0bb7479494b893a104b49bfbf97925',1,'VFoundation::SPoint']]],
  ['y_1',['Y',['../classVFoundation_1_1VFloatVectorMapXY.html#a1182f6dae741d2c6ce5e8dbd2528f13d',1,'VFoundation::VFloatVectorMapXY']]]
];
