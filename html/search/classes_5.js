var searchData=
[
  ['scolour_0',['SColour',['../structVFoundation_1_1SColour.html',1,'VFoundation']]],
  ['spoint_1',['SPoint',['../structVFoundation_1_1SPoint.html',1,'VFoundation']]],
  ['srect_2',['SRect',['../structVFoundation_1_1SRect.html',1,'VFoundation']]],
  ['ssize_3',['SSize',['../structVFoundation_1_1SSize.html',1,'VFoundation']]],
  ['svalue_4',['SValue',['../structVFoundation_1_1SValue.html',1,'VFoundation']]]
];
