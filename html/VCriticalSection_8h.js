var VCriticalSection_8h =
[
    [ "VFoundation::VCriticalSection", "classVFoundation_1_1VCriticalSection.html", "classVFoundation_1_1VCriticalSection" ]
];