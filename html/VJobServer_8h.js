var VJobServer_8h =
[
    [ "VFoundation::VJobServer", "classVFoundation_1_1VJobServer.html", "classVFoundation_1_1VJobServer" ]
];