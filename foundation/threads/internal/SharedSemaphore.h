#pragma once

#include "foundation/core/Mutex.h"
#include "foundation/threads/internal/Futex.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <semaphore.h>

namespace VFoundation {

/// One of the system's named semaphores, as this process has it open. All opens of a name in this process
/// share one object, including the word that ends their sleep after a local post.
/// Internal.
///
/// Bit 0 of the word is set while a thread sleeps or is about to, the other bits count the posts. A sleeper
/// sets the bit before its last look at the semaphore, a poster adds to the count after its post; as both
/// change the same word, one of them sees the other. A post that has no sleeper to wake costs that one
/// addition.
///
/// Threads: any thread may call any operation, as long as it has not closed its reference.
class SharedSemaphore {
  public:
    /// Opens the semaphore, or makes it with a count of 0. Null, with the system's error number in `error`,
    /// if that fails. Each success is paired with a `Close()`.
    static SharedSemaphore* Open(char const* name, int& error);
    /// Gives up one reference; the last one closes the semaphore for this process.
    void Close();

    bool Post();
    bool TryWait();
    /// Waits without limit. False when a signal interrupts the wait.
    bool Wait();
    /// Sleeps until the deadline (false), or until this process has posted and a unit is there to take
    /// (true).
    bool SleepUntilPosted(MonotonicTime deadline);

  private:
    explicit SharedSemaphore(sem_t* handle) noexcept : m_handle(handle) {}
    bool HasUnits();

    /// Protects the list of open semaphores and their references.
    static detail::Mutex ms_lock;
    static SharedSemaphore* ms_first VFOUNDATION_GUARDED_BY(ms_lock);

    static constexpr std::size_t kCacheLine = 64;

    sem_t* const m_handle;
    alignas(kCacheLine) std::atomic<std::uint32_t> m_posts{0}; // the word described above
    alignas(kCacheLine) long m_references VFOUNDATION_GUARDED_BY(ms_lock) = 0;
    SharedSemaphore* m_next VFOUNDATION_GUARDED_BY(ms_lock) = nullptr;
};

} // namespace VFoundation
