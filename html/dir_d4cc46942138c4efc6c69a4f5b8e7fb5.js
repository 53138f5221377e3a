var dir_d4cc46942138c4efc6c69a4f5b8e7fb5 =
[
    [ "lifecycle", "dir_97acc1a8deeff4cadca923f3eead62a9.html", "dir_97acc1a8deeff4cadca923f3eead62a9" ],
    [ "Mutex.h", "Mutex_8h.html", "Mutex_8h" ],
    [ "NarrowCast.h", "NarrowCast_8h.html", "NarrowCast_8h" ],
    [ "Registered.h", "Registered_8h.html", "Registered_8h" ],
    [ "TRefCounted.h", "TRefCounted_8h.html", "TRefCounted_8h" ],
    [ "VAtomicOp.h", "VAtomicOp_8h.html", "VAtomicOp_8h" ],
    [ "VClass.h", "VClass_8h.html", "VClass_8h" ],
    [ "VException.h", "VException_8h.html", "VException_8h" ],
    [ "VGarbageCan.h", "VGarbageCan_8h.html", "VGarbageCan_8h" ],
    [ "VMemoryProfiler.h", "VMemoryProfiler_8h.html", "VMemoryProfiler_8h" ],
    [ "VObject.h", "VObject_8h.html", "VObject_8h" ],
    [ "VObjectRef.h", "VObjectRef_8h.html", "VObjectRef_8h" ]
];