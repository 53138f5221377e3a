#include "foundation/threads/VJobServer.h"

#include "foundation/containers/VPtrArray.h"
#include "foundation/log/VLog.h"
#include "foundation/threads/IVJobDelegate.h"
#include "foundation/threads/VJob.h"
#include "foundation/threads/internal/ForkHook.h"
#include "foundation/threads/internal/ThreadPresence.h"
#include "foundation/threads/internal/WaitingJobs.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <limits>
#include <new>
#include <typeinfo>
#include <utility>

// The server's queue and the order of its jobs. Its thread's life is in VJobServerThread.cpp, what the thread does
// with a job in VJobServerPass.cpp.

namespace VFoundation {

VClass* VJobServer::ms_theClass = nullptr;
VPtrArray* VJobServer::ms_jobServersArray = nullptr;
std::atomic<bool> VJobServer::ms_bDebugJobServer{false};

namespace {

constexpr int kRunningLockTry = 100; // milliseconds

/// Protects `VJobServer::ms_jobServersArray`, which is public.
constinit detail::Mutex s_serversLock;

void EnterInServers(VJobServer* server) {
    detail::MutexLock const lock(s_serversLock);
    if (VJobServer::ms_jobServersArray && !VJobServer::ms_jobServersArray->AddPtr(server)) {
        throw std::bad_alloc();
    }
}

void RemoveFromServers(VJobServer* server) {
    detail::MutexLock const lock(s_serversLock);
    if (VJobServer::ms_jobServersArray) {
        VJobServer::ms_jobServersArray->RemovePtr(server);
    }
}

} // namespace

VJobServer::VJobServer(VClass* cls, char const* name, int queueSize)
    : Registered(cls), m_jobsSemaphore(queueSize, name),
      m_queue(static_cast<unsigned long>(long{queueSize} + 1)),
      m_waiting(std::make_unique<WaitingJobs>(long{queueSize} + 1)), m_name(name),
      m_forkHook(std::make_unique<ForkHook>(this, ForkHook::Calls{nullptr, nullptr, &ForgetThreadInChild})) {
    EnterInServers(this);
}

VJobServer::~VJobServer() {
    WithoutThrowing([this] { VLog::TraceRoutine("VJobServer [DESTRUCTOR]: %s  START\n", m_name.CString()); });
    bool const stopped = m_runningLock.TryLock(kRunningLockTry);
    WithoutThrowing([&] {
        VLog::TraceRoutine("VJobServer [DESTRUCTOR]: %s  Server running: %s\n", m_name.CString(),
                           stopped ? "no" : "yes");
    });
    m_waiting.reset();
    m_currentJob.Exchange(nullptr);
    WithoutThrowing([this] { VLog::TraceRoutine("VJobServer [DESTRUCTOR]: %s  END\n", m_name.CString()); });
    RemoveFromServers(this);
}

VJobServer* VJobServer::New() {
    return new VJobServer(kClassName, kDefaultQueueSize);
}

void VJobServer::InitializeClass() {
    auto made = VObjectRef<VPtrArray>::Adopt(VPtrArray::New());
    detail::MutexLock const lock(s_serversLock);
    if (!ms_jobServersArray) {
        ms_jobServersArray = made.Detach();
    }
}

void VJobServer::UninitializeClass() {
    VObjectRef<VPtrArray> servers; // released after the lock
    detail::MutexLock const lock(s_serversLock);
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
    if (auto const current = CurrentJob()) {
        out << "\nActive:\n" << current->Description().CString();
    } else {
        out << "\nNo active Job.\n";
    }
}

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
    if (!IsServerRunning() && HasThreadEndedItself()) {
        StartServer(); // it went without having seen this job
    }
    if (delegate) {
        delegate->JobQueued(this, job);
    }
    return true;
}

bool VJobServer::KillAllJobs() {
    m_queue.RemoveAllObjects();
    for (;;) {
        VObjectRef<VJob> waiting; // released after the lock
        detail::MutexLock const lock(m_jobsLock);
        waiting = m_waiting->TakeFirst();
        if (!waiting) {
            break;
        }
    }
    if (auto const current = CurrentJob()) {
        current->AbortJob();
    }
    return true;
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
    detail::MutexLock const lock(m_jobsLock);
    m_waiting->Sort(&CompareJobFunction);
}

/// Moves all queued jobs to their places among the waiting ones and makes the first of these the current one (null:
/// there is none). A job that does not go before the last one is appended, which spares long lists; any other goes
/// before the first that it precedes.
VJob* VJobServer::CollectAndTakeFirst() {
    bool const asksHook = typeid(*this) != typeid(VJobServer);
    if (asksHook) {
        CollectByHook();
    }
    detail::MutexLock const lock(m_jobsLock);
    for (VJob* job = nullptr; !asksHook && m_queue.UsedCount() > 0;) {
        m_waiting->MakeRoom(); // before the job leaves the queue, so that it always has a place
        if (!m_queue.Pop(&job)) {
            break;
        }
        m_waiting->InsertByPriority(job);
    }
    m_stage = eTaking;
    m_currentJob = m_waiting->TakeFirst();
    return m_currentJob.Get();
}

/// `CompareJobs` is client code and is called without the lock, so jobs may be thrown out or sorted at any step.
void VJobServer::CollectByHook() {
    VObjectRef<VJob> last;
    while (auto job = PopQueuedJob()) {
        long index = 0;
        try {
            if (!last) {
                last = WaitingJob(-1);
            }
            if (!last || !CompareJobs(job.Get(), last.Get())) {
                index = std::numeric_limits<long>::max();
                last = job;
            } else {
                for (auto next = WaitingJob(0); next && !CompareJobs(job.Get(), next.Get());
                     next = WaitingJob(index)) {
                    ++index;
                }
                last.Exchange(nullptr);
            }
        } catch (...) {
            detail::MutexLock const lock(m_jobsLock);
            m_waiting->Insert(job.Detach(), index); // no job is lost to a comparison that throws
            throw;
        }
        detail::MutexLock const lock(m_jobsLock);
        m_waiting->Insert(job.Detach(), index);
    }
}

/// Out of the queue, with room among the waiting ones; empty when none is queued.
VObjectRef<VJob> VJobServer::PopQueuedJob() {
    detail::MutexLock const lock(m_jobsLock);
    m_waiting->MakeRoom();
    VJob* job = nullptr;
    m_queue.Pop(&job);
    return VObjectRef<VJob>::Adopt(job);
}

/// The job at `index`; the last one for -1. Empty out of range.
VObjectRef<VJob> VJobServer::WaitingJob(long index) const {
    detail::MutexLock const lock(m_jobsLock);
    return VObjectRef<VJob>(m_waiting->At(index >= 0 ? index : m_waiting->Count() - 1));
}

VObjectRef<VJob> VJobServer::CurrentJob() const {
    detail::MutexLock const lock(m_jobsLock);
    return m_hasLostThread.load() ? VObjectRef<VJob>() : m_currentJob;
}

void VJobServer::DropCurrentJob() {
    VObjectRef<VJob> done; // released after the lock
    detail::MutexLock const lock(m_jobsLock);
    std::swap(done, m_currentJob);
}

/// Seconds since the thread started; negative without a thread.
double VJobServer::TimeStamp() const {
    double const start = m_threadStart.load(std::memory_order_relaxed);
    return start < 0 ? start : m_clock.GetElapsedTime() - start;
}

} // namespace VFoundation
