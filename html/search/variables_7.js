var searchData=
[
  ['name_0',['name',['../structVFoundation_1_1VValue_1_1TypeName.html#a2d9560c38653cfbbe09d9d9a7344f4e7',1,'VFoundation::VValue::TypeName']]]
];
