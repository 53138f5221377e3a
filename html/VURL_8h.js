var VURL_8h =
[
    [ "VFoundation::VURL", "classVFoundation_1_1VURL.html", "classVFoundation_1_1VURL" ]
];