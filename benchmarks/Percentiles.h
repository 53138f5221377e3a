#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace bench_support {

/// Reports the median and the 99th percentile of what was measured, in nanoseconds.
inline void ReportPercentiles(benchmark::State& state, std::vector<double>& seconds) {
    if (seconds.empty()) {
        return;
    }
    std::sort(seconds.begin(), seconds.end());
    auto const at = [&](std::size_t percent) { return 1e9 * seconds[(seconds.size() - 1) * percent / 100]; };
    state.counters["p50_ns"] = at(50);
    state.counters["p99_ns"] = at(99);
}

} // namespace bench_support
