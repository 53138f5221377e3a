#include "foundation/threads/internal/LockWord.h"

#include "foundation/threads/internal/Futex.h"

namespace VFoundation {

namespace {

// A thread that is about to sleep marks the word, so that freeing a lock without sleepers stays out of the
// kernel.
constexpr std::uint32_t kFree = 0;
constexpr std::uint32_t kTaken = 1;
constexpr std::uint32_t kTakenWithSleepers = 2;

} // namespace

bool TakeLockWord(std::atomic<std::uint32_t>& word, long milliseconds) noexcept {
    std::uint32_t expected = kFree;
    // acquire: what the holder before did; relaxed: a taken lock says nothing
    if (word.compare_exchange_strong(expected, kTaken, std::memory_order_acquire,
                                     std::memory_order_relaxed)) {
        return true;
    }
    bool const forever = milliseconds == -1;
    if (!forever && milliseconds <= 0) {
        return false;
    }
    MonotonicTime const deadline = forever ? MonotonicTime() : MillisecondsFromNow(milliseconds);
    // acquire, as above. A thread that has slept cannot know whether others still do, so it keeps the mark.
    while (word.exchange(kTakenWithSleepers, std::memory_order_acquire) != kFree) {
        if (!FutexWait(word, kTakenWithSleepers, forever ? nullptr : &deadline)) {
            return false;
        }
    }
    return true;
}

bool FreeLockWord(std::atomic<std::uint32_t>& word) noexcept {
    // release: hands over what was done under the lock
    std::uint32_t const before = word.exchange(kFree, std::memory_order_release);
    if (before == kTakenWithSleepers) {
        FutexWakeOne(word);
    }
    return before != kFree;
}

} // namespace VFoundation
