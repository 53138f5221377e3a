#include "foundation/core/VException.h"
#include "foundation/log/VLog.h"
#include "foundation/threads/IVJobDelegate.h"
#include "foundation/threads/VJob.h"
#include "foundation/threads/VJobServer.h"
#include "foundation/threads/internal/WithoutThrowing.h"

// One pass of a server's thread: it waits for a job, runs it, and tells the delegate and the log.

namespace VFoundation {

namespace {

// Milliseconds.
constexpr int kPauseTry = 20;
constexpr long kJobWait = 20;

} // namespace

void VJobServer::ServerPreDoActiveJob() {
}

void VJobServer::ServerPostDoActiveJob() {
}

/// False when an exception ended the step.
bool VJobServer::Guarded(void (VJobServer::*step)()) {
    try {
        (this->*step)();
        return true;
    } catch (VException const&) {
        WithoutThrowing([this] {
            VLog::Trace("VException in server: %s (stage:%i)\n", m_name.CString(), m_stage);
            VLog::Trace("VJobServer::ServerThread - A VException occured! (stage:%i)\n", m_stage);
        });
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        WithoutThrowing([this] {
            VLog::Trace("Exception in server: %s (stage:%li)\n", m_name.CString(), long{m_stage});
            VLog::Trace("VJobServer::ServerThread - An unrecognised exception occured! (stage:%i)\n",
                        m_stage);
        });
    }
    return false;
}

void VJobServer::RunPass() {
    m_stage = ePausing;
    if (!m_serverLock.IsFree()) {
        if (!m_serverLock.TryLock(kPauseTry)) {
            return;
        }
        m_serverLock.Unlock();
    }
    m_stage = eWaiting;
    if (!m_jobsSemaphore.WaitForSemaphore(kJobWait)) {
        return;
    }
    m_stage = eCollecting;
    VJob* const job = CollectAndTakeFirst();
    if (!job) {
        return; // the jobs were thrown out, or the signal came from another process
    }
    m_stage = eWorking;
    bool const succeeded = Work(job);
    m_stage = eReporting;
    Report(job, succeeded);
    m_stage = eFinishing;
    job->FinishedJob();
    if (ms_bDebugJobServer.load(std::memory_order_relaxed)) {
        VString const description = job->Description();
    }
    m_stage = eReleasing;
    DropCurrentJob();
}

bool VJobServer::Work(VJob* job) {
    job->StartedJob();
    if (IVJobDelegate* const delegate = job->Delegate()) {
        delegate->JobStarted(this, job);
    }
    ServerPreDoActiveJob();
    job->m_startTime.store(TimeStamp(), std::memory_order_relaxed);
    bool const succeeded = job->DoJob();
    job->m_endTime.store(TimeStamp(), std::memory_order_relaxed);
    ServerPostDoActiveJob();
    return succeeded;
}

void VJobServer::Report(VJob* job, bool succeeded) {
    IVJobDelegate* const delegate = IsServerRunning() ? job->Delegate() : nullptr;
    if (delegate && succeeded) {
        delegate->JobSucceeded(this, job);
    } else if (delegate) {
        delegate->JobFailed(this, job);
    }
}

/// Does what an exception kept a pass from doing. Each call gets at least one stage further.
void VJobServer::FinishInterruptedJob() {
    auto const job = CurrentJob();
    if (job && m_stage == eWorking) {
        m_stage = eReporting;
        Report(job.Get(), false);
    }
    if (job && m_stage == eReporting) {
        m_stage = eFinishing;
        job->FinishedJob();
    }
}

} // namespace VFoundation
