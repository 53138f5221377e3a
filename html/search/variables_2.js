var searchData=
[
  ['green_0',['green',['../structVFoundation_1_1SColour.html#a60ee765a7a665f6200ce9ab5d05f0312',1,'VFoundation::SColour']]],
  ['green16_1',['green16',['../structVFoundation_1_1SColour.html#a43ffb3b80c417ffaf269dd76dbd708cd',1,'VFoundation::SColour']]]
];
