#include "foundation/threads/VJobServer.h"

#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VException.h"
#include "foundation/log/VLog.h"
#include "foundation/threads/IVJobDelegate.h"
#include "foundation/threads/VJob.h"
#include "foundation/threads/internal/Futex.h"
#include "foundation/threads/internal/ThreadPresence.h"
#include "foundation/threads/internal/WaitingJobs.h"

#include <algorithm>
#include <cstdio>
#include <typeinfo>
#include <utility>

namespace VFoundation {

VClass* VJobServer::ms_theClass = nullptr;
VPtrArray* VJobServer::ms_jobServersArray = nullptr;
std::atomic<bool> VJobServer::ms_bDebugJobServer{false};

namespace {

// Milliseconds.
constexpr int kPauseTry = 20;
constexpr long kJobWait = 20;
constexpr int kRunningLockTry = 500;
constexpr int kEndTry = 100;
constexpr long kStartSleep = 10;

constexpr int kStartSleeps = 10;
/// After the first one.
constexpr int kMoreEndTries = 10;

constinit std::mutex s_serversLock;

void EnterInServers(VJobServer* server) {
    std::lock_guard const lock(s_serversLock);
    if (VJobServer::ms_jobServersArray) {
        VJobServer::ms_jobServersArray->AddPtr(server);
    }
}

void RemoveFromServers(VJobServer* server) {
    std::lock_guard const lock(s_serversLock);
    if (VJobServer::ms_jobServersArray) {
        VJobServer::ms_jobServersArray->RemovePtr(server);
    }
}

} // namespace

/// The time that a thread spends in the server, however it ends.
class VJobServer::ThreadScope {
  public:
    explicit ThreadScope(VJobServer* server) : m_server(server), m_presence(server->CurrentPresence()) {
        m_presence->Enter();
    }
    ThreadScope(ThreadScope const&) = delete;
    ThreadScope& operator=(ThreadScope const&) = delete;
    ~ThreadScope() {
        m_server->LeaveThread(*m_presence, m_holdsRunningLock);
        m_server->Release();
        m_presence->Leave();
    }

    bool TakeRunningLock() { return m_holdsRunningLock = m_server->m_runningLock.TryLock(kRunningLockTry); }

  private:
    VJobServer* m_server;
    std::shared_ptr<ThreadPresence> m_presence;
    bool m_holdsRunningLock = false;
};

VJobServer::VJobServer(VClass* cls, char const* name, int queueSize)
    : Registered(cls), m_jobsSemaphore(queueSize, name),
      m_queue(static_cast<unsigned long>(long{queueSize} + 1)),
      m_waiting(std::make_unique<WaitingJobs>(long{queueSize} + 1)), m_name(name) {
    EnterInServers(this);
}

VJobServer::~VJobServer() {
    VLog::Trace("VJobServer [DESTRUCTOR]: %s  START\n", m_name.CString());
    bool const stopped = m_runningLock.TryLock(kEndTry);
    VLog::Trace("VJobServer [DESTRUCTOR]: %s  Server running: %s\n", m_name.CString(),
                stopped ? "no" : "yes");
    m_waiting.reset();
    m_currentJob.Exchange(nullptr);
    VLog::Trace("VJobServer [DESTRUCTOR]: %s  END\n", m_name.CString());
    RemoveFromServers(this);
}

VJobServer* VJobServer::New() {
    return new VJobServer(kClassName, kDefaultQueueSize);
}

void VJobServer::InitializeClass() {
    auto* made = VPtrArray::New();
    {
        std::lock_guard const lock(s_serversLock);
        if (!ms_jobServersArray) {
            ms_jobServersArray = std::exchange(made, nullptr);
        }
    }
    if (made) {
        made->Release();
    }
}

void VJobServer::UninitializeClass() {
    VObjectRef<VPtrArray> servers;
    std::lock_guard const lock(s_serversLock);
    servers = VObjectRef<VPtrArray>::Adopt(std::exchange(ms_jobServersArray, nullptr));
}

void VJobServer::Retain() const {
    VObject::Retain();
}

void VJobServer::Release() const {
    VObject::Release();
}

void VJobServer::GetDescription(VString& out) const {
    VObject::GetDescription(out);
    VString queued;
    queued.Format("%s  Queued: %li\n", IsServerRunning() ? "  [ACTIVE]" : "  Inactive", m_queue.UsedCount());
    out << queued.CString();
    VObjectRef<VJob> current;
    {
        std::lock_guard const lock(m_jobsLock);
        current = m_currentJob;
    }
    if (current) {
        out << "\nActive:\n" << current->Description().CString();
    } else {
        out << "\nNo active Job.\n";
    }
}

// Jobs

bool VJobServer::AddJob(VJob* job) {
    if (!job) {
        return false;
    }
    if (!IsServerRunning()) {
        StartServer();
    }
    // The thread may run the job, and others may change its delegate, as soon as it is in the queue.
    IVJobDelegate* const delegate = job->Delegate();
    double const timeBefore = job->QueuedTime();
    if (double const now = TimeStamp(); now >= 0) {
        job->m_queuedTime.store(now, std::memory_order_relaxed);
    }
    job->m_queued.store(true, std::memory_order_relaxed);
    if (!m_queue.Push(job)) {
        job->m_queued.store(false, std::memory_order_relaxed);
        job->m_queuedTime.store(timeBefore, std::memory_order_relaxed);
        return false;
    }
    m_jobsSemaphore.ReleaseSemaphore(1, nullptr);
    if (delegate) {
        delegate->JobQueued(this, job);
    }
    return true;
}

bool VJobServer::KillAllJobs() {
    m_queue.RemoveAllObjects();
    for (;;) {
        VObjectRef<VJob> waiting;
        std::lock_guard const lock(m_jobsLock); // goes before the job does
        waiting = m_waiting->TakeFirst();
        if (!waiting) {
            break;
        }
    }
    VObjectRef<VJob> current;
    {
        std::lock_guard const lock(m_jobsLock);
        current = m_currentJob;
    }
    if (current) {
        current->AbortJob();
    }
    return true;
}

void VJobServer::ServerPreDoActiveJob() {
}

void VJobServer::ServerPostDoActiveJob() {
}

bool VJobServer::CompareJobs(VJob* a, VJob* b) {
    return a && b && a->Priority() > b->Priority();
}

int VJobServer::CompareJobFunction(VObject const** a, VObject const** b) {
    auto const* const first = static_cast<VJob const*>(*a);
    auto const* const second = static_cast<VJob const*>(*b);
    if (!first || !second) {
        return (first ? 0 : 1) - (second ? 0 : 1);
    }
    return (first->Priority() < second->Priority() ? 1 : 0) -
           (first->Priority() > second->Priority() ? 1 : 0);
}

void VJobServer::SortJobArray() {
    std::lock_guard const lock(m_jobsLock);
    m_waiting->Sort(&CompareJobFunction);
}

/// Only then is the order known without asking `CompareJobs`.
bool VJobServer::IsPlainServer() const {
    return typeid(*this) == typeid(VJobServer);
}

void VJobServer::CollectJobs() {
    VJob* popped = nullptr;
    if (IsPlainServer()) {
        std::lock_guard const lock(m_jobsLock);
        while (m_queue.Pop(&popped)) {
            InsertByPriority(VObjectRef<VJob>::Adopt(popped).Get());
        }
        return;
    }
    while (m_queue.Pop(&popped)) {
        InsertByHook(VObjectRef<VJob>::Adopt(popped).Get());
    }
}

void VJobServer::InsertByPriority(VJob* job) {
    long const count = m_waiting->Count();
    long index = 0;
    if (count == 0 || job->Priority() <= m_waiting->At(count - 1)->Priority()) {
        index = count;
    }
    while (index < count && job->Priority() <= m_waiting->At(index)->Priority()) {
        ++index;
    }
    m_waiting->Insert(job, index);
}

/// As the hook is called without the lock, the jobs may be thrown out or sorted at any step.
void VJobServer::InsertByHook(VJob* job) {
    long index = 0;
    auto const isNextAhead = [&] {
        VObjectRef<VJob> next;
        {
            std::lock_guard const lock(m_jobsLock);
            next.Exchange(m_waiting->At(index));
        }
        return next && !CompareJobs(job, next.Get());
    };
    auto const insert = [&] {
        std::lock_guard const lock(m_jobsLock);
        m_waiting->Insert(job, std::min(index, m_waiting->Count()));
    };
    try {
        while (isNextAhead()) {
            ++index;
        }
    } catch (...) {
        insert(); // no job is lost to a comparison that throws
        throw;
    }
    insert();
}

VJob* VJobServer::MakeFirstCurrent() {
    std::lock_guard const lock(m_jobsLock);
    m_currentJob = m_waiting->TakeFirst();
    return m_currentJob.Get();
}

void VJobServer::DropCurrentJob() {
    VObjectRef<VJob> done;
    std::lock_guard const lock(m_jobsLock);
    std::swap(done, m_currentJob);
}

// The thread

/// Seconds since the thread started; negative without a thread.
double VJobServer::TimeStamp() const {
    double const start = m_threadStart.load(std::memory_order_relaxed);
    return start < 0 ? start : m_clock.GetElapsedTime() - start;
}

bool VJobServer::IsOwnThread() const noexcept {
    return m_threadID.load(std::memory_order_relaxed) == VThread::GetCurrentThreadID();
}

std::shared_ptr<ThreadPresence> VJobServer::CurrentPresence() const {
    std::lock_guard const lock(m_threadLock);
    return m_presence;
}

bool VJobServer::StartServer() {
    if (!m_serverLock.TryLock(0)) {
        return false;
    }
    bool const attempted = StartThread();
    m_serverLock.Unlock();
    for (int sleeps = 0; attempted && sleeps < kStartSleeps && m_state.load() == eStarting; ++sleeps) {
        MonotonicTime const end = std::chrono::steady_clock::now() + std::chrono::milliseconds(kStartSleep);
        FutexWait(m_state, eStarting, &end);
    }
    return attempted;
}

/// False when there is a thread already.
bool VJobServer::StartThread() {
    auto const presence = std::make_shared<ThreadPresence>();
    {
        std::lock_guard const lock(m_threadLock);
        if (IsServerRunning() || (m_presence && !m_presence->HasLeft())) {
            return false;
        }
        m_presence = presence;
    }
    m_state.store(eStarting);
    Retain(); // the thread's reference
    auto thread =
        VObjectRef<VThread>::Adopt(VThread::StartThread(&ServerThreadProxy, this, m_name.CString()));
    if (!thread) {
        m_state.store(eStopped);
        presence->Leave();
        Release();
        return true;
    }
    thread->SetPriority(m_threadPriority);
    VThread::RegisterThread(thread.Get());
    {
        std::lock_guard const lock(m_threadLock);
        m_thread = std::move(thread);
    }
    presence->PublishHandle();
    return true;
}

bool VJobServer::EndServer(bool /*wait*/) {
    if (IsOwnThread()) {
        m_state.store(eStopped); // it cannot wait for itself
        return true;
    }
    for (int tries = 0; tries <= kMoreEndTries; ++tries) {
        bool const stopped = m_runningLock.TryLock(kEndTry);
        m_state.store(eStopped); // also for a thread that has not come up yet
        if (stopped) {
            m_runningLock.Unlock();
            if (auto const presence = CurrentPresence()) {
                presence->WaitUntilLeft(kEndTry);
            }
            return true;
        }
    }
    std::fprintf(stderr, "%s - %s aborting - thread stuck?\n", "VJobServer::EndServer", m_name.CString());
    return true;
}

void* VJobServer::ServerThreadProxy(void* server) {
    {
        auto* const self = static_cast<VJobServer*>(server);
        ThreadScope scope(self);
        self->ServerThread(scope);
    }
    VThread::EndThread();
}

void VJobServer::ServerThread(ThreadScope& scope) {
    m_threadID.store(VThread::GetCurrentThreadID(), std::memory_order_relaxed);
    std::uint32_t expected = eStarting;
    if (m_state.compare_exchange_strong(expected, eRunning)) {
        FutexWakeAll(m_state);
    }
    VLog::Trace("[%s] thread STARTED\n", m_name.CString());
    m_threadStart.store(m_clock.GetElapsedTime(), std::memory_order_relaxed);
    if (!scope.TakeRunningLock()) {
        VLog::Trace("[%s] (server thread) ERROR: did not obtain server running lock! Aborting.\n",
                    m_name.CString());
        return;
    }
    while (IsServerRunning()) {
        if (!Guarded(&VJobServer::RunPass)) {
            while (!Guarded(&VJobServer::FinishInterruptedJob)) {
            }
            DropCurrentJob();
        }
    }
}

void VJobServer::LeaveThread(ThreadPresence& presence, bool holdsRunningLock) {
    m_state.store(eStopped); // a job may have ended the thread itself
    DropCurrentJob();
    m_threadStart.store(-1, std::memory_order_relaxed);
    presence.WaitForHandle(kEndTry);
    VObjectRef<VThread> thread;
    {
        std::lock_guard const lock(m_threadLock);
        thread = std::move(m_thread);
    }
    VThread::UnregisterThread(thread.Get());
    thread.Exchange(nullptr);
    VLog::Trace("[%s] thread ENDED\n", m_name.CString());
    m_threadID.store(VThread::ThreadID{}, std::memory_order_relaxed);
    if (holdsRunningLock) {
        m_runningLock.Unlock();
    }
}

/// False when the step was ended by an exception.
bool VJobServer::Guarded(void (VJobServer::*step)()) {
    try {
        (this->*step)();
        return true;
    } catch (VException const&) {
        VLog::Trace("VException in server: %s (stage:%i)\n", m_name.CString(), m_stage);
        VLog::Trace("VJobServer::ServerThread - A VException occured! (stage:%i)\n", m_stage);
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        VLog::Trace("Exception in server: %s (stage:%li)\n", m_name.CString(), long{m_stage});
        VLog::Trace("VJobServer::ServerThread - An unrecognised exception occured! (stage:%i)\n", m_stage);
    }
    return false;
}

void VJobServer::RunPass() {
    m_stage = ePausing;
    if (!m_serverLock.TryLock(kPauseTry)) {
        return;
    }
    m_serverLock.Unlock();
    m_stage = eWaiting;
    if (!m_jobsSemaphore.WaitForSemaphore(kJobWait)) {
        return;
    }
    m_stage = eCollecting;
    CollectJobs();
    m_stage = eTaking;
    VJob* const job = MakeFirstCurrent();
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
    VJob* const job = m_currentJob.Get(); // changed by this thread only
    if (job && m_stage == eWorking) {
        m_stage = eReporting;
        Report(job, false);
    }
    if (job && m_stage == eReporting) {
        m_stage = eFinishing;
        job->FinishedJob();
    }
}

} // namespace VFoundation
