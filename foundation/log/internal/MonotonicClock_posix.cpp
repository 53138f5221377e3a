#include "foundation/log/internal/MonotonicClock.h"

#include "foundation/core/NarrowCast.h"

#include <ctime>

namespace VFoundation {

std::uint64_t ReadMonotonicClock() noexcept {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return narrow_cast<std::uint64_t>(now.tv_sec) * 1'000'000'000 + narrow_cast<std::uint64_t>(now.tv_nsec);
}

ClockTimeBase ReadMonotonicTimeBase() noexcept {
    return {1, 1};
}

} // namespace VFoundation
