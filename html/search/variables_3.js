var searchData=
[
  ['height_0',['height',['../structVFoundation_1_1SSize.html#adfaccdb51afab6c9d2dd9134bd7fe264',1,'VFoundation::SSize']]]
];
