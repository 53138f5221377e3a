#include "tests/support/Sleeps.h"

#include <cerrno>
#include <cstdarg>
#include <ctime>
#include <dlfcn.h>
#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

// Stands before the system's functions in which the library sleeps, so that tests see every sleep and need no clock.

namespace testing_support {

thread_local Sleeps t_sleeps;
std::atomic<long> s_sleepsBegun{0};

namespace {

/// True when this sleep is to end at once.
bool BeginSleep() {
    ++t_sleeps.count;
    ++s_sleepsBegun;
    return t_sleeps.interruptions > 0 && t_sleeps.interruptions-- > 0;
}

} // namespace
} // namespace testing_support

using namespace testing_support;

extern "C" long syscall(long number, ...) noexcept {
    static auto const original = reinterpret_cast<decltype(&syscall)>(dlsym(RTLD_NEXT, "syscall"));
    long arguments[6];
    va_list list;
    va_start(list, number);
    for (long& argument : arguments) {
        argument = va_arg(list, long);
    }
    va_end(list);
    if (number == SYS_futex && static_cast<int>(arguments[1]) == FUTEX_WAIT_BITSET_PRIVATE) {
        if (BeginSleep()) {
            errno = EINTR;
            return -1;
        }
        arguments[3] = t_sleeps.forever ? 0 : arguments[3];
    }
    return original(number, arguments[0], arguments[1], arguments[2], arguments[3], arguments[4],
                    arguments[5]);
}

extern "C" int clock_nanosleep(clockid_t clock, int flags, timespec const* time, timespec* left) {
    static auto const original =
        reinterpret_cast<decltype(&clock_nanosleep)>(dlsym(RTLD_NEXT, "clock_nanosleep"));
    if (BeginSleep()) {
        *left = *time;
        return EINTR;
    }
    return original(clock, flags, time, left);
}
