#pragma once

#include "foundation/core/Export.h"

namespace VFoundation {

class VJob;
class VJobServer;

/// Is told what becomes of a job: queued, started, and then succeeded or failed.
///
/// `JobQueued` is called on the thread that added the job, after it was queued: the server's thread may have
/// started or even finished it by then. The others are called on the server's thread. The server holds no lock
/// meanwhile, so a delegate may call anything, `AddJob` and `RequestEnd` included.
///
/// An exception of `JobQueued` passes to the caller of `AddJob`, and the job stays queued. Any other exception
/// makes the job a failed one (`VJobServer`).
///
/// Ownership: jobs borrow their delegate; it outlives them.
/// Threads: see above. A delegate of several jobs may be called by several threads at once.
class VFOUNDATION_API IVJobDelegate {
  public:
    virtual void JobQueued(VJobServer* server, VJob* job) = 0;
    virtual void JobStarted(VJobServer* server, VJob* job) = 0;
    /// `DoJob()` returned true.
    virtual void JobSucceeded(VJobServer* server, VJob* job) = 0;
    /// `DoJob()` returned false, or an exception ended the job.
    virtual void JobFailed(VJobServer* server, VJob* job) = 0;

  protected:
    ~IVJobDelegate() = default; // never deleted through this interface
};

} // namespace VFoundation
