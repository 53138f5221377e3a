var VJobPoolTicket_8h =
[
    [ "VFoundation::VJobPoolTicket", "classVFoundation_1_1VJobPoolTicket.html", "classVFoundation_1_1VJobPoolTicket" ]
];