#include "foundation/threads/VJobServer.h"

#include "foundation/log/VLog.h"
#include "foundation/threads/VJob.h"
#include "foundation/threads/internal/Futex.h"
#include "foundation/threads/internal/ThreadPresence.h"
#include "foundation/threads/internal/WaitingJobs.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <cstdio>
#include <new>
#include <utility>

// The life of a server's thread: its start, its end, and how others wait for either.

namespace VFoundation {

namespace {

// Milliseconds.
constexpr int kRunningLockTry = 500;
constexpr int kEndTry = 100;
constexpr long kStartSleep = 10;

constexpr int kStartSleeps = 10;
/// After the first one.
constexpr int kMoreEndTries = 10;

} // namespace

/// Undoes a start that has come no further than the thread's reference.
class VJobServer::StartScope {
  public:
    StartScope(VJobServer* server, ThreadPresence* presence) : m_server(server), m_presence(presence) {
        m_server->m_state.store(eStarting);
        m_server->Retain();
    }
    StartScope(StartScope const&) = delete;
    StartScope& operator=(StartScope const&) = delete;
    ~StartScope() {
        if (!m_started) {
            m_server->m_state.store(eStopped);
            m_presence->Leave();
            m_server->Release();
        }
    }
    void Started() noexcept { m_started = true; }

  private:
    VJobServer* m_server;
    ThreadPresence* m_presence;
    bool m_started = false;
};

/// The time that a thread spends in the server, however it ends.
class VJobServer::ThreadScope {
  public:
    explicit ThreadScope(VJobServer* server) : m_server(server), m_presence(server->CurrentPresence()) {
        m_presence->Enter();
    }
    ThreadScope(ThreadScope const&) = delete;
    ThreadScope& operator=(ThreadScope const&) = delete;
    ~ThreadScope() {
        m_presence->BeginLeaving();
        m_server->LeaveThread(*m_presence, m_holdsRunningLock);
        if (m_server->MarkThreadOver(*m_presence) && m_holdsRunningLock) {
            WithoutThrowing([this] { m_server->StartThread(); });
        }
        m_server->Release();
        m_presence->Leave();
    }

    bool TakeRunningLock() {
        m_holdsRunningLock = m_server->m_runningLock.TryLock(kRunningLockTry);
        m_presence->ReportUp();
        return m_holdsRunningLock;
    }

  private:
    VJobServer* m_server;
    std::shared_ptr<ThreadPresence> m_presence;
    bool m_holdsRunningLock = false;
};

bool VJobServer::IsOwnThread() const noexcept {
    return m_threadID.load(std::memory_order_relaxed) == VThread::GetCurrentThreadID();
}

std::shared_ptr<ThreadPresence> VJobServer::CurrentPresence() const {
    detail::MutexLock const lock(m_threadLock);
    return m_presence;
}

VObjectRef<VThread> VJobServer::TakeThread() {
    detail::MutexLock const lock(m_threadLock);
    return std::move(m_thread);
}

bool VJobServer::StartServer() {
    if (!m_serverLock.TryLock(0)) {
        return false;
    }
    struct UnlockScope {
        VLock& lock;
        ~UnlockScope() { lock.Unlock(); }
    };
    bool attempted = false;
    {
        UnlockScope const unlock{m_serverLock};
        attempted = StartThread();
    }
    for (int sleeps = 0; attempted && sleeps < kStartSleeps && m_state.load() == eStarting; ++sleeps) {
        MonotonicTime const end = MillisecondsFromNow(kStartSleep);
        FutexWait(m_state, eStarting, &end);
    }
    return attempted;
}

/// False when there is a thread already, and when there is no memory for what it shares with the server.
bool VJobServer::StartThread() {
    std::shared_ptr<ThreadPresence> presence;
    try {
        presence = std::make_shared<ThreadPresence>();
    } catch (std::bad_alloc const&) {
        return false;
    }
    std::shared_ptr<ThreadPresence> previous = presence; // released after the lock
    {
        detail::MutexLock const lock(m_threadLock);
        if (IsServerRunning() || (m_presence && !m_isThreadOver && !m_presence->HasLeft())) {
            return false;
        }
        m_isThreadOver = false;
        std::swap(m_presence, previous);
    }
    DropWhatTheParentRan();
    StartScope scope(this, presence.get());
    auto thread =
        VObjectRef<VThread>::Adopt(VThread::StartThread(&ServerThreadProxy, this, m_name.CString()));
    if (!thread) {
        return true;
    }
    scope.Started();
    thread->SetPriority(m_threadPriority);
    VThread::RegisterThread(thread.Get());
    {
        detail::MutexLock const lock(m_threadLock);
        m_thread = std::move(thread);
    }
    presence->PublishHandle();
    return true;
}

bool VJobServer::EndServer(bool /*wait*/) {
    auto const presence = CurrentPresence();
    if (presence) {
        // Until the thread has the running lock, others get it too, and would take the server for stopped.
        presence->WaitUntilUp(kRunningLockTry);
    }
    for (int tries = 0; tries <= kMoreEndTries; ++tries) {
        bool const free = m_runningLock.TryLock(kEndTry);
        if (free) {
            m_runningLock.Unlock();
        }
        bool const up = !presence || presence->IsUp();
        RequestEnd();
        if (free && up) {
            if (presence) {
                presence->WaitUntilLeft(kEndTry);
            }
            return true;
        }
        if (free) {
            presence->WaitUntilUp(kEndTry);
        }
    }
    std::fprintf(stderr, "%s - %s aborting - thread stuck?\n", "VJobServer::EndServer", m_name.CString());
    return true;
}

void VJobServer::RequestEnd() {
    m_state.store(eStopped); // also for a thread that has not come up yet
    if (auto const presence = CurrentPresence()) {
        presence->Dismiss();
    }
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
    WithoutThrowing([this] { VLog::TraceRoutine("[%s] thread STARTED\n", m_name.CString()); });
    m_threadStart.store(m_clock.GetElapsedTime(), std::memory_order_relaxed);
    if (!scope.TakeRunningLock()) {
        WithoutThrowing([this] {
            VLog::Trace("[%s] (server thread) ERROR: did not obtain server running lock! Aborting.\n",
                        m_name.CString());
        });
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
    VObjectRef<VThread> thread = TakeThread();
    VThread::UnregisterThread(thread.Get());
    thread.Exchange(nullptr);
    WithoutThrowing([this] { VLog::TraceRoutine("[%s] thread ENDED\n", m_name.CString()); });
    m_threadID.store(VThread::ThreadID{}, std::memory_order_relaxed);
    if (holdsRunningLock) {
        m_runningLock.Unlock();
    }
}

/// The thread's last step in the server: the next one may start from here on. True when that is left to this one: a job
/// has ended it, and others wait. A job that is added later finds the mark (`HasThreadEndedItself`).
bool VJobServer::MarkThreadOver(ThreadPresence const& presence) {
    bool hasWaiting = false;
    {
        detail::MutexLock const lock(m_jobsLock);
        hasWaiting = m_waiting->Count() > 0;
    }
    detail::MutexLock const lock(m_threadLock);
    m_isThreadOver = true;
    return !presence.IsDismissed() && (hasWaiting || m_queue.UsedCount() > 0);
}

/// Its last step is done, and nobody told it to end.
bool VJobServer::HasThreadEndedItself() const {
    detail::MutexLock const lock(m_threadLock);
    return m_isThreadOver && m_presence && !m_presence->IsDismissed();
}

/// Called in a child process, before anything else runs there. Only marks what the lost thread had: releasing it
/// may run client code.
void VJobServer::ForgetThreadInChild(void* server) {
    auto* const self = static_cast<VJobServer*>(server);
    bool const hadThread = self->m_threadID.load(std::memory_order_relaxed) != VThread::ThreadID{};
    if (!hadThread || self->IsOwnThread()) {
        return; // a thread that forks goes on in the child
    }
    self->m_hasLostThread.store(true);
    self->m_threadID.store(VThread::ThreadID{}, std::memory_order_relaxed);
    self->m_threadStart.store(-1, std::memory_order_relaxed);
    self->m_state.store(eStopped);
    self->m_runningLock.Unlock();
    self->m_serverLock.Unlock();
    if (self->RetainCount() > 1) {
        self->Release(); // the thread's reference
    }
}

void VJobServer::DropWhatTheParentRan() {
    if (m_hasLostThread.exchange(false)) {
        DropCurrentJob();
        VObjectRef<VThread> const thread = TakeThread();
        VThread::UnregisterThread(thread.Get());
    }
}

} // namespace VFoundation
