#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <cstdint>
#include <memory>
#include <pthread.h>

namespace VFoundation {

template <class T>
class VObjectArrayTmpl;

/// A thread of the system, and the few things that every thread needs. The object is a handle: when it goes,
/// the thread runs on. A thread ends when its body returns or calls `EndThread()`.
///
/// The library neither joins nor detaches a thread, so the system keeps its stack until the process ends. A
/// program that starts many short threads passes `ID()` to `pthread_join` or `pthread_detach`.
///
/// DELIBERATE: a priority is recorded and not given to the system; every thread runs at the usual one.
///
/// Ownership: by reference count.
/// Threads: the static operations may be called by any thread; a `VThread` object is for one thread at a
/// time.
class VFOUNDATION_API VThread : public Registered<VThread, VObject> {
  public:
    static constexpr char const* kClassName = "VThread";
    static VClass* ms_theClass;

    /// Other numbers are kept as they are.
    enum ePriority : std::int32_t { eLow = 0, eNormal = 1, eHigh = 2 };
    /// The system's own type, so that an id can be handed to the system.
    using ThreadID = pthread_t;
    using Body = void* (*)(void*);

    /// A handle of no thread.
    explicit VThread(VClass* cls = nullptr);
    VThread(VThread const&) = delete;
    VThread& operator=(VThread const&) = delete;
    ~VThread() override;
    static VThread* New();
    /// Makes the list of live threads.
    static void InitializeClass();
    /// Drops it, with the references it holds.
    static void UninitializeClass();

    /// Runs `body(argument)` on a new thread, which an exception must not leave. The result (owned) is its
    /// handle, or null if the system refused or memory ran out, which is traced. The name is not used. The
    /// body may already be over when this returns.
    static VThread* StartThread(Body body, void* argument, char const* name);
    /// Ends the calling thread as if its body had returned null. Its stack is unwound; code that swallows the
    /// unwinding ends the process, so a `catch (...)` on the way passes it on:
    ///
    ///     catch (...) {
    ///         if (VThread::CaughtEndOfThread()) {
    ///             throw;
    ///         }
    [[noreturn]] static void EndThread();
    /// In a `catch (...)`: true when it caught the unwinding of an ending or cancelled thread, and no
    /// exception.
    static bool CaughtEndOfThread() noexcept;
    /// Sleeps so many milliseconds; 0 and less return at once.
    static void Sleep(long milliseconds);
    static ThreadID GetCurrentThreadID() noexcept { return pthread_self(); }

    /// Enters a thread in the list of live threads (retained), once. False for null, when it is there
    /// already, when memory runs out, and while the library is not initialised. `StartThread` does not do it.
    static bool RegisterThread(VThread* thread);
    /// Takes a thread out of that list again; nothing if it is not there.
    static void UnregisterThread(VThread* thread);

    /// Records the priority; true.
    bool SetPriority(ePriority priority);
    ePriority Priority() const noexcept { return m_priority; }

    /// True when the handle stands for a thread, running or over.
    bool HasThread() const noexcept { return m_handle != nullptr; }
    /// The system's id of the thread. Only where `HasThread()`.
    ThreadID ID() const noexcept { return *m_handle; }

    /// An object kept for as long as the handle (retained), or null. The library sets none.
    void SetObject(VObject* object) { m_object.Exchange(object); }
    VObject* Object() const noexcept { return m_object.Get(); }

    /// The list of live threads, or null. `RegisterThread` and `UnregisterThread` lock it; other code does not
    /// use it while threads start and end.
    static VObjectArrayTmpl<VThread>* ms_threads;

  private:
    /// 0, or the system's error number.
    static int CreateSystemThread(ThreadID& id, Body body, void* argument);

    VObjectRef<VObject> m_object;
    std::unique_ptr<ThreadID> m_handle;
    ePriority m_priority = eNormal;
};

} // namespace VFoundation
