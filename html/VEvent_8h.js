var VEvent_8h =
[
    [ "VFoundation::VEvent", "classVFoundation_1_1VEvent.html", "classVFoundation_1_1VEvent" ]
];