#include "foundation/threads/VLock.h"

#include "foundation/log/VLog.h"
#include "foundation/threads/internal/Futex.h"

#include <cerrno>

namespace VFoundation {

VClass* VLock::ms_theClass = nullptr;

namespace {

// What the word of a lock may hold. Whoever has to sleep says so first, so that an `Unlock` nobody waits for
// stays out of the kernel.
constexpr std::uint32_t kFree = 0;
constexpr std::uint32_t kTaken = 1;
constexpr std::uint32_t kTakenWithSleepers = 2;

} // namespace

VLock* VLock::New() {
    return new VLock();
}

bool VLock::TryLock(int milliseconds) {
    bool const taken = Take(milliseconds);
    m_locked.store(taken, std::memory_order_relaxed);
    return taken;
}

bool VLock::Take(int milliseconds) {
    std::uint32_t expected = kFree;
    if (m_state.compare_exchange_strong(expected, kTaken, std::memory_order_acquire,
                                        std::memory_order_relaxed)) {
        return true;
    }
    bool const forEver = milliseconds == -1;
    if (!forEver && milliseconds <= 0) {
        return false;
    }
    MonotonicTime const deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    // A thread that has slept takes the lock with the word for sleepers, as it cannot know whether it was
    // alone.
    while (m_state.exchange(kTakenWithSleepers, std::memory_order_acquire) != kFree) {
        if (!FutexWait(m_state, kTakenWithSleepers, forEver ? nullptr : &deadline)) {
            return false;
        }
    }
    return true;
}

void VLock::Unlock() {
    m_locked.store(false, std::memory_order_relaxed);
    std::uint32_t const before = m_state.exchange(kFree, std::memory_order_release);
    if (before == kTakenWithSleepers) {
        FutexWakeOne(m_state);
    } else if (before == kFree) {
        VLog::TraceDebug("Semaphore release: %i\n", EPERM);
    }
}

} // namespace VFoundation
