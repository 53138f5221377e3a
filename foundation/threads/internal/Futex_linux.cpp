#include "foundation/threads/internal/Futex.h"

#include <cerrno>
#include <climits>
#include <ctime>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace VFoundation {

static_assert(sizeof(std::atomic<std::uint32_t>) == sizeof(std::uint32_t), "the kernel reads the bare word");

bool FutexWait(std::atomic<std::uint32_t>& word, std::uint32_t expected,
               MonotonicTime const* deadline) noexcept {
    timespec until{};
    if (deadline) {
        using namespace std::chrono;
        auto const sinceStart = deadline->time_since_epoch();
        auto const whole = duration_cast<seconds>(sinceStart);
        until.tv_sec = whole.count();
        until.tv_nsec = duration_cast<nanoseconds>(sinceStart - whole).count();
    }
    // The variant with a bit set takes an absolute time on the monotonic clock.
    long const result = syscall(SYS_futex, &word, FUTEX_WAIT_BITSET_PRIVATE, expected,
                                deadline ? &until : nullptr, nullptr, FUTEX_BITSET_MATCH_ANY);
    return result == 0 || errno != ETIMEDOUT;
}

void PauseCore() noexcept {
#if defined(__x86_64__)
    __builtin_ia32_pause();
#elif defined(__aarch64__)
    __asm__ __volatile__("yield");
#endif
}

void FutexWakeOne(std::atomic<std::uint32_t>& word) noexcept {
    syscall(SYS_futex, &word, FUTEX_WAKE_PRIVATE, 1, nullptr, nullptr, 0);
}

void FutexWakeAll(std::atomic<std::uint32_t>& word) noexcept {
    syscall(SYS_futex, &word, FUTEX_WAKE_PRIVATE, INT_MAX, nullptr, nullptr, 0);
}

} // namespace VFoundation
