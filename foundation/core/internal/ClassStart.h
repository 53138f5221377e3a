#pragma once

#include "foundation/core/Mutex.h"
#include "foundation/core/Registered.h"

namespace VFoundation {

/// Runs the hooks of classes: one thread runs a class's hook, the others wait for that class alone. Internal to
/// the kernel.
///
/// Threads: any. No lock is held while a hook runs.
struct ClassStart {
    /// The record in its slot, made when there is none, its hook run or running on this thread.
    static VClass* Ready(detail::ClassDefinition const& definition);
    /// Runs the hook of a record that was kept over a shut-down; nothing for any other. If the hook throws, the
    /// next start runs it again.
    static void RunAgain(VClass& record);
    /// Runs the hook of a record that is unstarted, or waits for the thread that does.
    static void Start(VClass& record);

  private:
    /// Tells a living thread from all others.
    using ThreadMark = void const*;

    /// A thread that waits for a class, in a list of such threads.
    struct Waiter {
        ThreadMark thread;
        VClass const* record;
        Waiter* next;
    };

    static VClass* MakeOrAttach(detail::ClassDefinition const& definition);
    static bool MayStart(VClass& record);
    static bool WaitCouldEnd(VClass const& record) VFOUNDATION_REQUIRES(s_lock);
    static ThreadMark ThisThread() noexcept;
    static Waiter const* WaiterOf(ThreadMark thread) VFOUNDATION_REQUIRES(s_lock);
    static void Remove(Waiter const& waiter) VFOUNDATION_REQUIRES(s_lock);
    static void Finish(VClass& record, VClass::State state);

    static detail::Mutex s_lock; // also for every change of a state from and to `eStarting`
    static Waiter* s_waiters VFOUNDATION_GUARDED_BY(s_lock);
};

} // namespace VFoundation
