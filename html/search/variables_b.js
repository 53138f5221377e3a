var searchData=
[
  ['width_0',['width',['../structVFoundation_1_1SSize.html#a16768c68fb00a71527185a6e26525214',1,'VFoundation::SSize']]]
];
