var searchData=
[
  ['y_0',['y',['../structVFoundation_1_1SPoint.html#a9c0bb7479494b893a104b49bfbf97925',1,'VFoundation::SPoint']]]
];
