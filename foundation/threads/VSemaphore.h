#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace VFoundation {

class SharedSemaphore;
class VString;

/// A counting semaphore that the system knows by name: every process that opens the name shares one count. It
/// wakes the writer of a log file and the thread of a job server.
///
/// The name is used as it is given, and a semaphore outlives every process that opened it: the library never
/// removes a name (`sem_unlink`), so that units posted but not taken are still there for the next run.
///
/// DELIBERATE: a timed wait polls, in steps of 5 ms and of 1 ms at the end; a post of another process is seen
/// only at the next step. A post of this process ends the sleep inside a step.
/// DELIBERATE: a time-out of 0 or less waits forever; it never returns at once.
/// DELIBERATE: the last step is not followed by another try; a post that comes in it is left for the next
/// wait.
/// DELIBERATE: the maximum is recorded and not enforced; more units may be posted.
///
/// Ownership: by reference count. No thread may be inside an operation when the last reference goes.
/// Threads: any thread may post and wait. `Init` is for one thread, with no other using the object.
class VFOUNDATION_API VSemaphore : public Registered<VSemaphore, VObject> {
  public:
    static constexpr char const* kClassName = "VSemaphore";
    static VClass* ms_theClass;

    /// Opens nothing: every operation fails until `Init`.
    explicit VSemaphore(VClass* cls = nullptr);
    VSemaphore(long maxSignals, char const* name, VClass* cls = nullptr);
    VSemaphore(VSemaphore const&) = delete;
    VSemaphore& operator=(VSemaphore const&) = delete;
    ~VSemaphore() override;
    static VSemaphore* New();

    /// Opens the semaphore of that name; makes it, with a count of 0 and for every user, if it does not exist.
    /// What was open before is closed and the tally starts again. False when it cannot be opened, also for
    /// want of memory, with the reason on the standard error stream; every operation fails then.
    bool Init(long maxSignals, char const* name);

    /// Posts `count` units; `previousCount` is not written. False when a post fails; those before it stand.
    /// DELIBERATE: a count of 0 or less posts nothing and succeeds; the tally changes by it.
    bool ReleaseSemaphore(long count, long* previousCount);

    /// Takes one unit, waiting at most so many milliseconds; 0 or less waits forever. False when no unit
    /// came in time, when a signal handler interrupts a wait without limit, and when the semaphore is not
    /// open (after the same time; at once if that is forever).
    bool WaitForSemaphore(long milliseconds);

    /// Units posted less units taken through this object. A statistic: not the semaphore's count.
    long SignalCount() const noexcept {
        return static_cast<std::int32_t>(m_posted.load(std::memory_order_relaxed) -
                                         m_taken.load(std::memory_order_relaxed));
    }
    /// As given to `Init`.
    long MaxSignals() const noexcept { return m_maxSignals; }
    /// As given to `Init`; null before it (borrowed).
    VString const* Name() const noexcept { return m_name.Get(); }

  private:
    void Close();
    bool WaitInSteps(long milliseconds);

    static constexpr std::size_t kCacheLine = 64;

    SharedSemaphore* m_handle = nullptr;
    std::int32_t m_maxSignals = 0;
    VObjectRef<VString> m_name;
    // Apart, so that posting and waiting threads do not slow each other down. relaxed: statistics.
    alignas(kCacheLine) std::atomic<std::uint32_t> m_posted{0};
    alignas(kCacheLine) std::atomic<std::uint32_t> m_taken{0};
};

} // namespace VFoundation
