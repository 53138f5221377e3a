#pragma once

#include <atomic>
#include <cstdint>

namespace VFoundation {

/// A binary lock in one word, which starts as 0 (free). It belongs to no thread.
/// Internal: what `VLock` and `VCriticalSection` are made of.
///
/// Takes the lock, waiting at most so many milliseconds of the monotonic clock: -1 waits forever, 0 and other
/// negatives do not wait. True when taken.
bool TakeLockWord(std::atomic<std::uint32_t>& word, long milliseconds) noexcept;
/// Frees the lock. False, and nothing changed, when it was free.
bool FreeLockWord(std::atomic<std::uint32_t>& word) noexcept;

} // namespace VFoundation
