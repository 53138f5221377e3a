var searchData=
[
  ['factory_0',['Factory',['../classVFoundation_1_1VClass.html#aae863450fbe3c34bca4d780b8f972c22',1,'VFoundation::VClass']]],
  ['filebits_1',['FileBits',['../namespaceVFoundation.html#aced2eb6e0a557b02514f1a71332c829f',1,'VFoundation']]]
];
