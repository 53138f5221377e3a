var searchData=
[
  ['roundmode_0',['RoundMode',['../classVFoundation_1_1VFpuMode.html#aaedc08d7077452513dfc380d7ddf380f',1,'VFoundation::VFpuMode']]]
];
