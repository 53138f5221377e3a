var searchData=
[
  ['blue_0',['blue',['../structVFoundation_1_1SColour.html#abf6e43ba311ab766e6e970c80196517a',1,'VFoundation::SColour']]],
  ['blue16_1',['blue16',['../structVFoundation_1_1SColour.html#ac35c06a33525880091151b632f6a5e4b',1,'VFoundation::SColour']]],
  ['bottom_2',['bottom',['../structVFoundation_1_1SRect.html#abd19463b1712b6ffc323a5e347f0bf0d',1,'VFoundation::SRect']]]
];
