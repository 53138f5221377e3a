var classVFoundation_1_1VDiskInfo =
[
    [ "VDiskInfo", "classVFoundation_1_1VDiskInfo.html#ae7310f1093f344747d51c18b9511b18a", null ],
    [ "VDiskInfo", "classVFoundation_1_1VDiskInfo.html#ab5c3d6660e09739504e195ca2b4da8ae", null ],
    [ "FreeBytes", "classVFoundation_1_1VDiskInfo.html#a152bfef61331699fc5aaa2623a97f8a0", null ],
    [ "GetDescription", "classVFoundation_1_1VDiskInfo.html#a8a6f3b0fc30fee3c62c9cb27cc60caf4", null ],
    [ "InitializeVolumeInformation", "classVFoundation_1_1VDiskInfo.html#a6d1f4eca55ae2d3788ef7a9cb66359ed", null ],
    [ "Kind", "classVFoundation_1_1VDiskInfo.html#a2851386d4dca44f3ba111e5f5ce23290", null ],
    [ "MountPath", "classVFoundation_1_1VDiskInfo.html#ae0635664028c8f5d7ad26969bdcb648f", null ],
    [ "New", "classVFoundation_1_1VDiskInfo.html#ab4ff27c299f668b81cad9d08fb838eda", null ],
    [ "operator=", "classVFoundation_1_1VDiskInfo.html#a5534ce4e642b29f4b0bdd9816a24a22b", null ],
    [ "TotalBytes", "classVFoundation_1_1VDiskInfo.html#aa9c8fe9f424c9e98cbe33bdce84c323f", null ],
    [ "UninitializeClass", "classVFoundation_1_1VDiskInfo.html#a2ec011076df598494c4adf4e9baeece4", null ],
    [ "UsedBytes", "classVFoundation_1_1VDiskInfo.html#a77215f2105191a6d6e4b62e078a73a3a", null ],
    [ "VolumeName", "classVFoundation_1_1VDiskInfo.html#a1c0192e3d88e621a5ffb1757351e772b", null ],
    [ "kClassName", "classVFoundation_1_1VDiskInfo.html#a7e50bd284d9f15eed9a5367e9b4110a3", null ],
    [ "kMountedVolume", "classVFoundation_1_1VDiskInfo.html#a0fc363d75cea7810e12f645504451fb2", null ],
    [ "kMountPathSize", "classVFoundation_1_1VDiskInfo.html#af06ee574a769bf5181a6a7bad64b7a86", null ],
    [ "ms_theClass", "classVFoundation_1_1VDiskInfo.html#ad898b24f3701e73589352c92e80a35a4", null ],
    [ "VDISK_INFO_VOLUME_INFO", "classVFoundation_1_1VDiskInfo.html#abef1b4df34c43e53e2145d4aea961677", null ],
    [ "VDISK_INFO_VOLUME_NAMES", "classVFoundation_1_1VDiskInfo.html#aee2612ce2e0fed8daf142afb75851ebf", null ]
];