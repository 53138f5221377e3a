var searchData=
[
  ['red_0',['red',['../structVFoundation_1_1SColour.html#ab2ef5ab7631daad1c4881ad3e9a371e3',1,'VFoundation::SColour']]],
  ['red16_1',['red16',['../structVFoundation_1_1SColour.html#a71f85daa9456d8c186e0a8cd72c9b8ae',1,'VFoundation::SColour']]],
  ['right_2',['right',['../structVFoundation_1_1SRect.html#a65a2ebd605a2cf6323d09f628fb1baa4',1,'VFoundation::SRect']]]
];
