var VCmdEvent_8h =
[
    [ "VFoundation::VCmdEvent", "classVFoundation_1_1VCmdEvent.html", "classVFoundation_1_1VCmdEvent" ]
];