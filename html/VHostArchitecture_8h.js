var VHostArchitecture_8h =
[
    [ "VFoundation::VHostArchitecture", "classVFoundation_1_1VHostArchitecture.html", "classVFoundation_1_1VHostArchitecture" ],
    [ "VFoundation::VHostArchitecture::VCPUInfo", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo.html", "classVFoundation_1_1VHostArchitecture_1_1VCPUInfo" ]
];