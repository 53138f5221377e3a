#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLog.h"

#include <benchmark/benchmark.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <spdlog/spdlog.h>

#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <string>
#include <unistd.h>

// One formatted line on one thread, written by the caller. Each log beside spdlog's synchronous sink of the
// same kind, with spdlog's usual prefix (date, time, name, level) and with the bare message, which is what
// our log writes.

namespace {

using namespace VFoundation;

constexpr char kTarget[] = "/dev/null";
constexpr char kName[] = "guide";

/// Lines go to a buffered file, as a log file's direct writes do.
class FileLog : public Registered<FileLog, VLog> {
  public:
    static constexpr char const* kClassName = "BenchFileLog";
    static inline VClass* ms_theClass = nullptr;
    explicit FileLog(VClass* cls = nullptr) : Registered(cls) {}
    ~FileLog() override { std::fclose(m_file); }
    static FileLog* New() { return new FileLog; }
    void AddString(char const* line) override { std::fputs(line, m_file); }

  private:
    std::FILE* m_file = std::fopen(kTarget, "w");
};

/// Sends the standard error stream to the target for its lifetime.
class StderrAway {
  public:
    StderrAway() : m_saved(dup(STDERR_FILENO)) {
        int const target = open(kTarget, O_WRONLY);
        dup2(target, STDERR_FILENO);
        close(target);
    }
    StderrAway(StderrAway const&) = delete;
    StderrAway& operator=(StderrAway const&) = delete;
    ~StderrAway() {
        dup2(m_saved, STDERR_FILENO);
        close(m_saved);
    }

  private:
    int m_saved;
};

void RunTrace(benchmark::State& state, VLog* log) {
    VLog::SetSafeStartup();
    VLog::SetLog(log);
    log->Release();
    int number = 0;
    for (auto _ : state) {
        VLog::Trace("%s: file %i of %li copied\n", kName, ++number, 100000L);
    }
    VLog::DestroyDefaultLog();
}

void RunSpdlog(benchmark::State& state, spdlog::sink_ptr const& sink, bool bare) {
    spdlog::logger logger("bench", sink);
    if (bare) {
        logger.set_pattern("%v");
    }
    int number = 0;
    for (auto _ : state) {
        logger.info("{}: file {} of {} copied", kName, ++number, 100000L);
    }
}

void StderrLine_VLog(benchmark::State& state) {
    StderrAway const away;
    RunTrace(state, VLog::New());
}
BENCHMARK(StderrLine_VLog);

void StderrLine_Spdlog(benchmark::State& state) {
    StderrAway const away;
    RunSpdlog(state, std::make_shared<spdlog::sinks::stderr_sink_mt>(), state.range(0) != 0);
}
BENCHMARK(StderrLine_Spdlog)->ArgName("bare")->Arg(0)->Arg(1);

void FileLine_VLog(benchmark::State& state) {
    RunTrace(state, FileLog::New());
}
BENCHMARK(FileLine_VLog);

void FileLine_Spdlog(benchmark::State& state) {
    RunSpdlog(state, std::make_shared<spdlog::sinks::basic_file_sink_mt>(kTarget), state.range(0) != 0);
}
BENCHMARK(FileLine_Spdlog)->ArgName("bare")->Arg(0)->Arg(1);

void TimedLineInContext_VLog(benchmark::State& state) {
    VLog::SetSafeStartup();
    auto const log = VObjectRef<VLog>::Adopt(FileLog::New());
    VLog::SetLog(log.Get());
    log->SetShowContextTime(true);
    VLog::StartLoggingContext("bench");
    log->Retain(); // for RunTrace, which takes over a reference
    RunTrace(state, log.Get());
}
BENCHMARK(TimedLineInContext_VLog);

} // namespace
