#pragma once

#include <atomic>
#include <cstdint>

namespace VFoundation {

/// A flag that threads can wait for. A thread that finds the flag set sees what was done before `Set()`.
/// Internal.
///
/// Threads: any thread may call any operation. As waking may outlast the `Set()` that caused it, the flag has
/// to live until the last `Set()` has returned.
class EventFlag {
  public:
    bool IsSet() const noexcept { return m_word.load() != 0; }
    void Set() noexcept;
    void Clear() noexcept { m_word.store(0); }
    /// Waits at most so many milliseconds; true when the flag is set.
    bool WaitFor(long milliseconds) const noexcept;

  private:
    mutable std::atomic<std::uint32_t> m_word{0};
};

} // namespace VFoundation
