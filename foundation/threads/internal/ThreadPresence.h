#pragma once

#include "foundation/core/Mutex.h"
#include "foundation/threads/VThread.h"
#include "foundation/threads/internal/EventFlag.h"
#include "foundation/threads/internal/ForkHook.h"

#include <atomic>

namespace VFoundation {

/// Whether a thread that the library started is still there. The thread and the object that started it share one
/// (`std::shared_ptr`), so that it outlives both. In a child process the thread is there only if it made the fork.
/// Internal.
///
///     starter:  make one, start the thread, PublishHandle, ..., Dismiss, WaitUntilLeft
///     thread:   Enter, ReportUp, the work, BeginLeaving, let go of everything, Leave
///
/// The end of the library waits for threads that were dismissed or are leaving (`LibraryEnd`), also when nothing
/// else does: a job that ends its own server cannot wait for its thread.
///
/// Threads: any thread may call any operation.
class ThreadPresence {
  public:
    class LibraryEnd;

    ThreadPresence();
    ThreadPresence(ThreadPresence const&) = delete;
    ThreadPresence& operator=(ThreadPresence const&) = delete;
    ~ThreadPresence();

    /// The starter has stored the thread's handle, which the thread may have to remove again.
    void PublishHandle() noexcept { m_published.Set(); }
    /// Waits at most so many milliseconds; true when the handle is stored.
    bool WaitForHandle(long milliseconds) const noexcept { return m_published.WaitFor(milliseconds); }

    /// The thread's first step.
    void Enter() noexcept { m_thread.store(VThread::GetCurrentThreadID()); }
    /// The thread is ready to work, or has failed to get there.
    void ReportUp() noexcept { m_up.Set(); }
    /// Also once the thread has left.
    bool IsUp() const noexcept { return m_up.IsSet(); }
    bool WaitUntilUp(long milliseconds) const noexcept { return m_up.WaitFor(milliseconds); }

    /// The thread was told to end.
    void Dismiss() noexcept { m_dismissed.store(true); }
    bool IsDismissed() const noexcept { return m_dismissed.load(); }
    /// The thread's work is over, and with it every call of client code but the release of what it holds. A
    /// thread that comes so late that the end of the library no longer waited for it stays here until that end
    /// is over.
    void BeginLeaving() noexcept;
    /// The thread's last use of the library: it has let go of everything else.
    void Leave() noexcept;
    /// Also when the thread could not be started and `Leave` was called for it.
    bool HasLeft() const noexcept { return m_left.IsSet(); }
    /// Waits at most so many milliseconds; true when the thread has left.
    bool WaitUntilLeft(long milliseconds) const noexcept { return m_left.WaitFor(milliseconds); }

  private:
    static void LeaveInChild(void* self);

    static detail::Mutex ms_lock;
    static ThreadPresence* ms_first VFOUNDATION_GUARDED_BY(ms_lock);
    static bool ms_libraryEnds VFOUNDATION_GUARDED_BY(ms_lock);

    std::atomic<VThread::ThreadID> m_thread{};
    EventFlag m_published;
    EventFlag m_up;
    EventFlag m_left;
    std::atomic<bool> m_dismissed{false};
    bool m_leaving VFOUNDATION_GUARDED_BY(ms_lock) = false;
    bool m_givenUp VFOUNDATION_GUARDED_BY(ms_lock) = false;
    ThreadPresence* m_next VFOUNDATION_GUARDED_BY(ms_lock) = nullptr;
    ThreadPresence** m_link VFOUNDATION_GUARDED_BY(ms_lock) = nullptr;
    ForkHook const m_forkHook;
};

/// Stands over the end of the library, and keeps threads that are on their way out from using what goes. Threads
/// that were not told to end are left alone: ending them is the client's part.
class ThreadPresence::LibraryEnd {
  public:
    LibraryEnd() = default;
    LibraryEnd(LibraryEnd const&) = delete;
    LibraryEnd& operator=(LibraryEnd const&) = delete;
    /// Lets the threads go on that came late.
    ~LibraryEnd();

    /// Waits for all threads that were told to end: 1.1 s for those that client code still keeps, which are then
    /// given up, and 25 s for those on their way out. Calls may be repeated, as threads are told to end.
    void Await() noexcept;

  private:
    static bool AwaitAll(bool onlyLeaving, long milliseconds) noexcept;
};

} // namespace VFoundation
