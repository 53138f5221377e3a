var dir_ba7dd44bd01a7c5fa2654e1cf3cc809e =
[
    [ "VDiskInfo.h", "VDiskInfo_8h.html", "VDiskInfo_8h" ],
    [ "VFile.h", "VFile_8h.html", "VFile_8h" ],
    [ "VFileInfo.h", "VFileInfo_8h.html", "VFileInfo_8h" ],
    [ "VFileManager.h", "VFileManager_8h.html", "VFileManager_8h" ],
    [ "VFpuMode.h", "VFpuMode_8h.html", "VFpuMode_8h" ],
    [ "VHostArchitecture.h", "VHostArchitecture_8h.html", "VHostArchitecture_8h" ]
];