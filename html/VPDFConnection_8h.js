var VPDFConnection_8h =
[
    [ "VFoundation::VPDFConnection", "classVFoundation_1_1VPDFConnection.html", "classVFoundation_1_1VPDFConnection" ]
];