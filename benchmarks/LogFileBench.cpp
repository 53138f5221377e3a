#include "benchmarks/Percentiles.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLogFile.h"

#include <benchmark/benchmark.h>
#include <spdlog/async.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <thread>
#include <unistd.h>
#include <vector>

// Formatted lines to a file. Direct: the caller writes. Queued: a writer thread does, and what counts is the
// caller's time for each line, in bursts with pauses as programs log, and without pauses. Both queues have room for
// 2048 lines. Where ours is full it drops lines, which do not count as done; spdlog's makes the caller wait, or drops
// the oldest lines. Both write the bare message.

namespace {

using namespace VFoundation;
using Clock = std::chrono::steady_clock;

constexpr char kName[] = "guide";

std::string TargetPath() {
    return (std::filesystem::temp_directory_path() / ("vfoundation-bench-" + std::to_string(getpid())))
        .string();
}

class OurLog {
  public:
    explicit OurLog(bool queued) : m_log(VObjectRef<VLogFile>::Adopt(new VLogFile(TargetPath().c_str()))) {
        VLog::SetSafeStartup();
        VLog::SetLog(m_log.Get());
        if (queued) {
            m_log->StartLoggingThread();
        }
    }
    OurLog(OurLog const&) = delete;
    OurLog& operator=(OurLog const&) = delete;
    ~OurLog() {
        m_log->ShutdownLoggingThread();
        VLog::DestroyDefaultLog();
        std::remove(TargetPath().c_str());
    }
    void Line(int number) { VLog::Trace("%s: file %i of %li copied\n", kName, number, 100000L); }
    void FlushEachLine() { m_log->SetFlushEachLine(true); }
    long Dropped() const { return m_log->DroppedLines(); }

  private:
    VObjectRef<VLogFile> m_log;
};

class Spdlog {
  public:
    using Policy = spdlog::async_overflow_policy;
    explicit Spdlog(bool queued, Policy policy = Policy::block) {
        auto const sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>(TargetPath(), true);
        if (queued) {
            m_pool = std::make_shared<spdlog::details::thread_pool>(VLogFile::kQueueCapacity, 1);
            m_log = std::make_shared<spdlog::async_logger>("bench", sink, m_pool, policy);
        } else {
            m_log = std::make_shared<spdlog::logger>("bench", sink);
        }
        m_log->set_pattern("%v");
    }
    Spdlog(Spdlog const&) = delete;
    Spdlog& operator=(Spdlog const&) = delete;
    ~Spdlog() {
        m_log.reset();
        m_pool.reset();
        std::remove(TargetPath().c_str());
    }
    void Line(int number) { m_log->info("{}: file {} of {} copied", kName, number, 100000L); }
    void FlushEachLine() { m_log->flush_on(spdlog::level::trace); }
    long Dropped() const { return m_pool ? static_cast<long>(m_pool->overrun_counter()) : 0; }

  private:
    std::shared_ptr<spdlog::details::thread_pool> m_pool;
    std::shared_ptr<spdlog::logger> m_log;
};

class SpdlogThatDrops : public Spdlog {
  public:
    explicit SpdlogThatDrops(bool queued) : Spdlog(queued, Policy::overrun_oldest) {}
};

template <class Log>
void Direct(benchmark::State& state) {
    Log log(false);
    int number = 0;
    for (auto _ : state) {
        log.Line(++number);
    }
    state.SetItemsProcessed(state.iterations());
}

template <class Log>
void Queued(benchmark::State& state) {
    Log log(true);
    long const burst = state.range(0);
    std::vector<double> latencies;
    int number = 0;
    for (auto _ : state) {
        std::chrono::duration<double> sum(0);
        for (long i = 0; i < burst; ++i) {
            auto const before = Clock::now();
            log.Line(++number);
            std::chrono::duration<double> const latency = Clock::now() - before;
            latencies.push_back(latency.count());
            sum += latency;
        }
        state.SetIterationTime(sum.count());
        if (burst < 1000) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }
    state.SetItemsProcessed(state.iterations() * burst - log.Dropped());
    bench_support::ReportPercentiles(state, latencies);
    state.counters["dropped"] = static_cast<double>(log.Dropped());
}

/// Each line handed to the system, as logs do that have to survive a crash.
template <class Log>
void Flushed(benchmark::State& state) {
    Log log(false);
    log.FlushEachLine();
    int number = 0;
    for (auto _ : state) {
        log.Line(++number);
    }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(Direct<OurLog>);
BENCHMARK(Direct<Spdlog>);
BENCHMARK(Flushed<OurLog>);
BENCHMARK(Flushed<Spdlog>);
BENCHMARK(Queued<OurLog>)->Arg(1)->Arg(100)->UseManualTime()->Iterations(500);
BENCHMARK(Queued<Spdlog>)->Arg(1)->Arg(100)->UseManualTime()->Iterations(500);
BENCHMARK(Queued<OurLog>)->Arg(100'000)->UseManualTime()->Iterations(3);
BENCHMARK(Queued<Spdlog>)->Arg(100'000)->UseManualTime()->Iterations(3);
BENCHMARK(Queued<SpdlogThatDrops>)->Arg(100'000)->UseManualTime()->Iterations(3);

} // namespace
