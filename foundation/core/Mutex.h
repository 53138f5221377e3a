#pragma once

#include "foundation/core/Export.h"

#include <mutex>

/// Annotations that tell clang which lock protects which member; it checks them with -Wthread-safety. Other
/// compilers see nothing.
#if defined(__clang__)
#define VFOUNDATION_THREAD_ATTRIBUTE(attribute) __attribute__((attribute))
#else
#define VFOUNDATION_THREAD_ATTRIBUTE(attribute)
#endif
/// On a member: read and written only while `lock` is held.
#define VFOUNDATION_GUARDED_BY(lock) VFOUNDATION_THREAD_ATTRIBUTE(guarded_by(lock))
/// On a pointer: what it points to is read and written only while `lock` is held.
#define VFOUNDATION_POINTEE_GUARDED_BY(lock) VFOUNDATION_THREAD_ATTRIBUTE(pt_guarded_by(lock))
/// On a function: the caller holds `lock`.
#define VFOUNDATION_REQUIRES(lock) VFOUNDATION_THREAD_ATTRIBUTE(requires_capability(lock))
/// On a function: the caller does not hold `lock`, because the function takes it or runs user code.
#define VFOUNDATION_EXCLUDES(lock) VFOUNDATION_THREAD_ATTRIBUTE(locks_excluded(lock))

namespace VFoundation::detail {

/// The lock of the library's own members and tables: not re-entrant, held for a few instructions, and never
/// while code of the library's users runs. Clients use `VCriticalSection`. Where a lock has to be re-entrant it is
/// a `std::recursive_mutex`, whose comment says what it protects.
class VFOUNDATION_API VFOUNDATION_THREAD_ATTRIBUTE(capability("mutex")) Mutex {
  public:
    constexpr Mutex() noexcept = default;
    Mutex(Mutex const&) = delete;
    Mutex& operator=(Mutex const&) = delete;
    ~Mutex() = default;

    void Lock() VFOUNDATION_THREAD_ATTRIBUTE(acquire_capability()) { m_mutex.lock(); }
    void Unlock() VFOUNDATION_THREAD_ATTRIBUTE(release_capability()) { m_mutex.unlock(); }
    /// True when the lock is now held.
    [[nodiscard]] bool TryLock() VFOUNDATION_THREAD_ATTRIBUTE(try_acquire_capability(true)) {
        return m_mutex.try_lock();
    }

  private:
    std::mutex m_mutex;
};

/// Holds a `Mutex` from its construction to `Unlock` or the end of its block.
class VFOUNDATION_API VFOUNDATION_THREAD_ATTRIBUTE(scoped_lockable) MutexLock {
  public:
    explicit MutexLock(Mutex& mutex) VFOUNDATION_THREAD_ATTRIBUTE(acquire_capability(mutex))
        : m_mutex(mutex) {
        m_mutex.Lock();
    }
    MutexLock(MutexLock const&) = delete;
    MutexLock& operator=(MutexLock const&) = delete;
    ~MutexLock() VFOUNDATION_THREAD_ATTRIBUTE(release_capability()) {
        if (m_held) {
            m_mutex.Unlock();
        }
    }

    /// Gives the lock up early, for code that must not run under it.
    void Unlock() VFOUNDATION_THREAD_ATTRIBUTE(release_capability()) {
        m_held = false;
        m_mutex.Unlock();
    }
    /// Takes the lock again after `Unlock`.
    void Lock() VFOUNDATION_THREAD_ATTRIBUTE(acquire_capability()) {
        m_mutex.Lock();
        m_held = true;
    }

  private:
    Mutex& m_mutex;
    bool m_held = true;
};

} // namespace VFoundation::detail
