var searchData=
[
  ['releasecallback_0',['ReleaseCallback',['../classVFoundation_1_1VBitmapImage.html#aad97598209d44060581d1e2a1840895a',1,'VFoundation::VBitmapImage']]]
];
