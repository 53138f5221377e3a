#pragma once

#include <cstdint>

namespace VFoundation {

/// Nanoseconds of one tick, as a fraction.
struct ClockTimeBase {
    std::uint32_t numerator;
    std::uint32_t denominator;
};

/// Ticks of a clock that only moves forward.
std::uint64_t ReadMonotonicClock() noexcept;
ClockTimeBase ReadMonotonicTimeBase() noexcept;

} // namespace VFoundation
