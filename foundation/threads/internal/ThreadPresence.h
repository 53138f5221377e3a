#pragma once

#include "foundation/threads/VThread.h"
#include "foundation/threads/internal/EventFlag.h"
#include "foundation/threads/internal/ForkHook.h"

#include <atomic>

namespace VFoundation {

/// Whether a thread that the library started is still there. The thread and the object that started it share one
/// (`std::shared_ptr`), so that it outlives both. In a child process the thread is there only if it made the fork.
/// Internal.
///
/// Threads: any thread may call any operation.
class ThreadPresence {
  public:
    ThreadPresence() : m_forkHook(this, {nullptr, nullptr, &LeaveInChild}) {}
    ThreadPresence(ThreadPresence const&) = delete;
    ThreadPresence& operator=(ThreadPresence const&) = delete;
    ~ThreadPresence() = default;

    /// The starter has stored the thread's handle, which the thread may have to remove again.
    void PublishHandle() noexcept { m_published.Set(); }
    /// Waits at most so many milliseconds; true when the handle is stored.
    bool WaitForHandle(long milliseconds) const noexcept { return m_published.WaitFor(milliseconds); }

    /// The thread's first step.
    void Enter() noexcept { m_thread.store(VThread::GetCurrentThreadID()); }
    /// The thread's last use of the library: it has let go of everything else.
    void Leave() noexcept { m_left.Set(); }
    /// Also when the thread could not be started and `Leave` was called for it.
    bool HasLeft() const noexcept { return m_left.IsSet(); }
    /// Waits at most so many milliseconds; true when the thread has left.
    bool WaitUntilLeft(long milliseconds) const noexcept { return m_left.WaitFor(milliseconds); }

  private:
    static void LeaveInChild(void* self) {
        auto* const presence = static_cast<ThreadPresence*>(self);
        if (presence->m_thread.load() != VThread::GetCurrentThreadID()) {
            presence->Leave();
        }
    }

    std::atomic<VThread::ThreadID> m_thread{};
    EventFlag m_published;
    EventFlag m_left;
    ForkHook const m_forkHook;
};

} // namespace VFoundation
