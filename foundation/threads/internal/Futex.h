#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace VFoundation {

using MonotonicTime = std::chrono::steady_clock::time_point;

/// At most a hundred years off, for a caller's largest number is more than the clock can count.
inline MonotonicTime MillisecondsFromNow(long milliseconds) noexcept {
    constexpr long kLongest = 1000L * 60 * 60 * 24 * 365 * 100;
    return std::chrono::steady_clock::now() +
           std::chrono::milliseconds(milliseconds < kLongest ? milliseconds : kLongest);
}

/// Sleeps while `word` holds `expected`, until `deadline` at most (null: without limit). False once the
/// deadline has passed; true for every other reason to wake, a signal or none at all among them: look at the
/// word again.
bool FutexWait(std::atomic<std::uint32_t>& word, std::uint32_t expected,
               MonotonicTime const* deadline) noexcept;

/// Gives way to the other thread of the core, in a loop that looks at a word again and again.
void PauseCore() noexcept;

/// Wakes one of the threads that sleep on `word`. The word itself is not touched, so it may be gone by now.
void FutexWakeOne(std::atomic<std::uint32_t>& word) noexcept;
/// Wakes all of them.
void FutexWakeAll(std::atomic<std::uint32_t>& word) noexcept;

} // namespace VFoundation
