var Mutex_8h =
[
    [ "VFOUNDATION_EXCLUDES", "Mutex_8h.html#ae0cf8c4b3e37a794f5372fa51fc38173", null ],
    [ "VFOUNDATION_GUARDED_BY", "Mutex_8h.html#aaa9825c2eeb651ed9bd39b205770b768", null ],
    [ "VFOUNDATION_POINTEE_GUARDED_BY", "Mutex_8h.html#ac37110fdaa53f1e42ebcedda1884ddfe", null ],
    [ "VFOUNDATION_REQUIRES", "Mutex_8h.html#a016e73f9ab2903555b646ac9328dd155", null ],
    [ "VFOUNDATION_THREAD_ATTRIBUTE", "Mutex_8h.html#a917f351254912dbe6c92a10358316cc7", null ]
];