var dir_c930ea43d46b9f33ede35f29cfc5897e =
[
    [ "IVJobDelegate.h", "IVJobDelegate_8h.html", "IVJobDelegate_8h" ],
    [ "VCriticalSection.h", "VCriticalSection_8h.html", "VCriticalSection_8h" ],
    [ "VCriticalSectionScope.h", "VCriticalSectionScope_8h.html", "VCriticalSectionScope_8h" ],
    [ "VJob.h", "VJob_8h.html", "VJob_8h" ],
    [ "VJobPoolTicket.h", "VJobPoolTicket_8h.html", "VJobPoolTicket_8h" ],
    [ "VJobServer.h", "VJobServer_8h.html", "VJobServer_8h" ],
    [ "VJobServerPool.h", "VJobServerPool_8h.html", "VJobServerPool_8h" ],
    [ "VLock.h", "VLock_8h.html", "VLock_8h" ],
    [ "VMutex.h", "VMutex_8h.html", "VMutex_8h" ],
    [ "VSemaphore.h", "VSemaphore_8h.html", "VSemaphore_8h" ],
    [ "VThread.h", "VThread_8h.html", "VThread_8h" ]
];