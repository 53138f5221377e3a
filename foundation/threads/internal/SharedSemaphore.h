#pragma once

#include "foundation/threads/internal/Futex.h"

#include <atomic>
#include <cstdint>
#include <semaphore.h>

namespace VFoundation {

/// One of the system's named semaphores, opened by this process. All who open a name share one of these, and
/// with it the bell that ends their sleep when this process posts.
///
/// The bell is one word: bit 0 is set while somebody sleeps or is about to, the rest counts the posts. A
/// sleeper sets the bit before it looks at the semaphore for the last time, a poster adds to the count after
/// it has posted; as both change the same word, one of them sees the other. A post to a semaphore that nobody
/// sleeps on costs that one addition.
///
/// Threads: any thread may call any operation, as long as it has not closed its reference.
class OpenSemaphore {
  public:
    /// Opens the semaphore, or makes it with a count of 0. Null, and the system's error number in `error`, if
    /// that fails. Each success is paired with a `Close()`.
    static OpenSemaphore* Open(char const* name, int& error);
    /// Gives up one reference; the last one closes the semaphore for this process.
    void Close();

    bool Post();
    bool TryWait();
    /// Waits without limit.
    bool Wait();
    /// Sleeps until the deadline (false), or until this process has posted and a unit is there to take
    /// (true).
    bool SleepUntilPosted(MonotonicTime deadline);

  private:
    explicit OpenSemaphore(sem_t* handle) noexcept : m_handle(handle) {}
    bool HasUnits();

    sem_t* m_handle;
    std::atomic<std::uint32_t> m_bell{0};
    long m_references = 0;
    OpenSemaphore* m_next = nullptr;
};

} // namespace VFoundation
