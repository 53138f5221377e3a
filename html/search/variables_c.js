var searchData=
[
  ['x_0',['x',['../structVFoundation_1_1SPoint.html#a3fee1c4c8918200458e5b357a472af8d',1,'VFoundation::SPoint']]]
];
