var searchData=
[
  ['x_0',['X',['../classVFoundation_1_1VFloatVectorMapXY.html#a18d7d4ee0e8ce3000b6db5b1c4dee103',1,'VFoundation::VFloatVectorMapXY']]],
  ['xor_1',['Xor',['../classVFoundation_1_1VBitString.html#a2ea2ca8a66b0328a4eb5259f8111276d',1,'VFoundation::VBitString']]]
];
