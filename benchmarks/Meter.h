#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>

namespace bench_support {

/// Measures the parts of an iteration that count, for benchmarks with `UseManualTime`: the wall time, and the
/// processor time of all threads. Making threads and elements stays outside.
class Meter {
  public:
    explicit Meter(benchmark::State& state) : m_state(state) {}

    void Start() {
        m_cpuStart = ProcessTime();
        m_start = std::chrono::steady_clock::now();
    }
    void Stop() {
        std::chrono::duration<double> const wall = std::chrono::steady_clock::now() - m_start;
        m_cpu += ProcessTime() - m_cpuStart;
        m_state.SetIterationTime(wall.count());
    }
    /// `items` were handled in all: reports their rate, and what one cost on all threads together.
    void Report(long items) {
        m_state.SetItemsProcessed(items);
        m_state.counters["cpu_ns"] = items > 0 ? 1e9 * m_cpu / static_cast<double>(items) : 0;
    }

  private:
    static double ProcessTime() {
        timespec now{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
    }

    benchmark::State& m_state;
    std::chrono::steady_clock::time_point m_start;
    double m_cpuStart = 0;
    double m_cpu = 0;
};

} // namespace bench_support
