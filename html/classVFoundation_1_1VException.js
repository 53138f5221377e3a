var classVFoundation_1_1VException =
[
    [ "eID", "classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00", [
      [ "eUnrecognized", "classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00a64c78eb93961c61f0220d30631990933", null ],
      [ "eOutOfMemory", "classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00a403f00e2110d7ace8087efc07d0fbd85", null ],
      [ "eNullPointer", "classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00a12c3c043613f7e14383ebcaa48d188bf", null ],
      [ "eObjectCreation", "classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00a4855300a20d77788bbb78531c335e2a8", null ],
      [ "eUnknown", "classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00ac8e59e74fae8ceeb1d06912139bca91a", null ],
      [ "eFileNotFound", "classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00a62647bb4ffd135e3e8a174b4d3bd63ba", null ],
      [ "eFileNotReadable", "classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00a81f36705b60ec2c03547efebb14f0497", null ],
      [ "eFileNotWriteable", "classVFoundation_1_1VException.html#a57516a35d3ec9468b3502b4225cd2c00a6057c0242c654a684ce462a369456c6f", null ]
    ] ],
    [ "VException", "classVFoundation_1_1VException.html#ad19921082dd15bcfd35835a20bb73c34", null ],
    [ "VException", "classVFoundation_1_1VException.html#affc44b895de303ad3d4186be72dfb034", null ],
    [ "AppendStackTrace", "classVFoundation_1_1VException.html#a763ee29ffad61f6deed29d986e74fbd7", null ],
    [ "DescriptionText", "classVFoundation_1_1VException.html#a9dfe384a401320fe895eb1c5b6d3323b", null ],
    [ "GetDescription", "classVFoundation_1_1VException.html#ae922b294e36f9085d9b433cff994cb6f", null ],
    [ "Id", "classVFoundation_1_1VException.html#a361ba1acc2605e9f43de0dc4ec4425d8", null ],
    [ "InitializeClass", "classVFoundation_1_1VException.html#a56b38f58c9b8246b7f68b7fa193c9bdd", null ],
    [ "New", "classVFoundation_1_1VException.html#a3bd1fd351bcccbf623ea96892b879110", null ],
    [ "operator=", "classVFoundation_1_1VException.html#a7024e287198c4299856aa1318006cbbf", null ],
    [ "Source", "classVFoundation_1_1VException.html#a241a8614d0fa090b22ad43900fa5e06b", null ],
    [ "StackTrace", "classVFoundation_1_1VException.html#a3682415c4691fb5c5e4ef45e8fb73263", null ],
    [ "Stage", "classVFoundation_1_1VException.html#a5bc89bd0d001e67b0c2cd388a018be41", null ],
    [ "UninitializeClass", "classVFoundation_1_1VException.html#abf42a8d11ee2ebf3ed0fa66852362f96", null ],
    [ "kClassName", "classVFoundation_1_1VException.html#a7ae0ded697b19f7fdc40e4b07fa62c4c", null ],
    [ "ms_exceptionReportEmail", "classVFoundation_1_1VException.html#ab8636b00eaf85cc95e86612fd0757a57", null ],
    [ "ms_productName", "classVFoundation_1_1VException.html#add0559a8acdedc97f50ff4af29612698", null ],
    [ "ms_theClass", "classVFoundation_1_1VException.html#a6a4685093c283e4ffe498e081b65d4d7", null ]
];