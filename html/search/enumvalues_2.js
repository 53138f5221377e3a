var searchData=
[
  ['vfoundation_5fnamed_5fcolours_0',['VFOUNDATION_NAMED_COLOURS',['../classVFoundation_1_1VColour.html#acdb60b5a2bc257862d5d068f52bba0acabb33d601fafd03924e42cc6ba5921793',1,'VFoundation::VColour']]]
];
