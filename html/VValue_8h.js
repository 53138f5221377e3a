var VValue_8h =
[
    [ "VFoundation::VValue", "classVFoundation_1_1VValue.html", "classVFoundation_1_1VValue" ],
    [ "VFoundation::VValue::TypeName", "structVFoundation_1_1VValue_1_1TypeName.html", "structVFoundation_1_1VValue_1_1TypeName" ]
];