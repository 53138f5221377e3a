var CmdEvent_8h =
[
    [ "VFoundation::CmdEvent", "classVFoundation_1_1CmdEvent.html", "classVFoundation_1_1CmdEvent" ]
];