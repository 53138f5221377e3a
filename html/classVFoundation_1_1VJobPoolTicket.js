var classVFoundation_1_1VJobPoolTicket =
[
    [ "VJobPoolTicket", "classVFoundation_1_1VJobPoolTicket.html#a6c4078d1d2ba53ea25ee5df96054d6b7", null ],
    [ "VJobPoolTicket", "classVFoundation_1_1VJobPoolTicket.html#a29ced12073bd5ba928853d842b7efe65", null ],
    [ "operator=", "classVFoundation_1_1VJobPoolTicket.html#a8ec167dca6cdff3a1af75ff341219271", null ],
    [ "kClassName", "classVFoundation_1_1VJobPoolTicket.html#aeb1d6598842b8bc023cfacc986d13533", null ],
    [ "kIsAbstract", "classVFoundation_1_1VJobPoolTicket.html#ae14af7b48bd9d1b76a365da0352de306", null ],
    [ "ms_theClass", "classVFoundation_1_1VJobPoolTicket.html#a7eddbbe2d3daf5f798a0190364eb0c6b", null ]
];