var searchData=
[
  ['callback_0',['Callback',['../classVFoundation_1_1VNotificationCenter.html#ad32c3bf58b14ce1ca1c92b37d75f665c',1,'VFoundation::VNotificationCenter::Callback()'],['../classVFoundation_1_1VNotificationTuple.html#a6256e104bdb23fbac9d0e15868499fce',1,'VFoundation::VNotificationTuple::Callback()']]],
  ['cgimage_1',['CGImage',['../namespaceVFoundation.html#a75eed4580d21299bfc07dac096d41137',1,'VFoundation']]]
];
