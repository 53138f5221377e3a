var searchData=
[
  ['eerror_0',['eError',['../classVFoundation_1_1VAIFile.html#a690af45d13e75a7ef42589ab25661a64',1,'VFoundation::VAIFile']]],
  ['eid_1',['eID',['../classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00',1,'VFoundation::VException']]],
  ['ekind_2',['eKind',['../classVFoundation_1_1VCommandTuple.html#a65fb997d2a26b186a3d14be45c24ec24',1,'VFoundation::VCommandTuple']]],
  ['emode_3',['eMode',['../classVFoundation_1_1IXMLFileIO.html#a7c49a467ff3ec1053b86a9ce8fcc5bc1',1,'VFoundation::IXMLFileIO']]],
  ['enamed_4',['eNamed',['../classVFoundation_1_1VColour.html#acdb60b5a2bc257862d5d068f52bba0ac',1,'VFoundation::VColour']]],
  ['enodetype_5',['eNodeType',['../classVFoundation_1_1IXMLFileIO.html#ae2ce69ca02c9747d865c23bdcc503431',1,'VFoundation::IXMLFileIO']]],
  ['epriority_6',['ePriority',['../classVFoundation_1_1VThread.html#a675d67dd4151197d90c8198d38bcdfc3',1,'VFoundation::VThread']]],
  ['ereadrule_7',['eReadRule',['../namespaceVFoundation.html#a2bf20fc3942d4feeba2d53d8e4881754',1,'VFoundation']]],
  ['estyle_8',['eStyle',['../structVFoundation_1_1SColour.html#a6c1018f173c5366f0f16a79fb4543660',1,'VFoundation::SColour']]],
  ['etype_9',['eType',['../classVFoundation_1_1VWindowFunction.html#a97cd0981b7a147d94d39e6aea1a6e23f',1,'VFoundation::VWindowFunction::eType()'],['../structVFoundation_1_1SValue.html#a8fcb606a98785bbf1cb90dcafae13622',1,'VFoundation::SValue::eType()']]]
];
