var VFpuMode_8h =
[
    [ "VFoundation::VFpuMode", "classVFoundation_1_1VFpuMode.html", "classVFoundation_1_1VFpuMode" ]
];