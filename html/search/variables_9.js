var searchData=
[
  ['top_0',['top',['../structVFoundation_1_1SRect.html#a2a1397edc865767778a1f3d0f48a5df0',1,'VFoundation::SRect']]],
  ['type_1',['type',['../structVFoundation_1_1VValue_1_1TypeName.html#a9ed231f6a9c48ed6b67fb6811f002548',1,'VFoundation::VValue::TypeName']]]
];
