#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>

namespace VFoundation {

using MonotonicTime = std::chrono::steady_clock::time_point;

/// Sleeps while `word` holds `expected`, until `deadline` at most (null: without limit). False once the
/// deadline has passed; true for every other reason to wake, which includes none at all: look at the word
/// again.
bool FutexWait(std::atomic<std::uint32_t>& word, std::uint32_t expected,
               MonotonicTime const* deadline) noexcept;

/// Wakes one of the threads that sleep on `word`. The word itself is not touched, so it may be gone by now.
void FutexWakeOne(std::atomic<std::uint32_t>& word) noexcept;
/// Wakes all of them.
void FutexWakeAll(std::atomic<std::uint32_t>& word) noexcept;

} // namespace VFoundation
