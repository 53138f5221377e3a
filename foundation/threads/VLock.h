#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

#include <atomic>
#include <cstdint>

namespace VFoundation {

/// A binary lock with a time-out that belongs to no thread: any thread may unlock it. The thread of a server
/// holds one for as long as it runs, which tells others that it is there. It is not re-entrant: to protect
/// data use a `VCriticalSection`.
///
/// |             | free                 | locked, by whichever thread                 |
/// |-------------|----------------------|---------------------------------------------|
/// | TryLock(ms) | true; locked         | waits at most so long for an `Unlock`       |
/// | Unlock()    | nothing              | free; one waiting thread goes on            |
///
/// Ownership: by reference count.
/// Threads: any thread may call any operation.
class VFOUNDATION_API VLock : public Registered<VLock, VObject> {
  public:
    static constexpr char const* kClassName = "VLock";
    static VClass* ms_theClass;

    explicit VLock(VClass* cls = nullptr) : Registered(cls) {}
    VLock(VLock const&) = delete;
    VLock& operator=(VLock const&) = delete;
    ~VLock() override = default;
    static VLock* New();

    /// Takes the lock, waiting at most so many milliseconds: -1 waits forever, 0 and other negatives do not
    /// wait. True when taken.
    bool TryLock(int milliseconds);
    /// Frees the lock. A free lock stays as it is.
    void Unlock();

    /// True when a `TryLock(0)` would succeed now.
    bool IsFree() const noexcept { return m_state.load(std::memory_order_acquire) == 0; }
    /// What the last call of any thread left: true after a `TryLock` that succeeded, false after one that did
    /// not and after `Unlock`. A hint, which may be wrong while a lock is held.
    bool IsLocked() const noexcept { return m_locked.load(std::memory_order_relaxed); }

  private:
    std::atomic<bool> m_locked{false};     // relaxed: a hint
    std::atomic<std::uint32_t> m_state{0}; // acquire: who finds it free sees what its holder did
};

} // namespace VFoundation
