var VCriticalSectionScope_8h =
[
    [ "VFoundation::VCriticalSectionScope", "classVFoundation_1_1VCriticalSectionScope.html", "classVFoundation_1_1VCriticalSectionScope" ]
];