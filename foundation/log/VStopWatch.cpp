#include "foundation/log/VStopWatch.h"

#include "foundation/core/NarrowCast.h"
#include "foundation/log/internal/MonotonicClock.h"

namespace VFoundation {

VClass* VStopWatch::ms_theClass = nullptr;
constinit std::atomic<std::uint32_t> VStopWatch::ms_numerator{1};
constinit std::atomic<std::uint32_t> VStopWatch::ms_denominator{1};

VStopWatch::VStopWatch(VClass* cls, bool start) : Registered(cls) {
    if (start) {
        StartTimer();
    }
}

VStopWatch* VStopWatch::New() {
    return new VStopWatch();
}

void VStopWatch::InitializeClass() {
    ClockTimeBase const base = ReadMonotonicTimeBase();
    ms_numerator.store(base.numerator, std::memory_order_relaxed);
    ms_denominator.store(base.denominator, std::memory_order_relaxed);
}

void VStopWatch::StartTimer() {
    m_start = ReadMonotonicClock();
    m_running = true;
}

double VStopWatch::GetElapsedTime() const {
    std::uint64_t const ticks = ReadMonotonicClock() - m_start;
    std::uint32_t const numerator = ms_numerator.load(std::memory_order_relaxed);
    std::uint32_t const denominator = ms_denominator.load(std::memory_order_relaxed);
    std::uint64_t const nanoseconds = numerator == denominator ? ticks : ticks * numerator / denominator;
    return narrow_cast<double>(nanoseconds) * 1e-9;
}

} // namespace VFoundation
