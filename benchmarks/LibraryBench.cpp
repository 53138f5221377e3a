// Start-up and shutdown of the library: repeated in one process, and once per process. The baseline is the same process
// without the library.

#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/log/VLog.h"

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace VFoundation;

constexpr char kNothing[] = "--do-nothing";
constexpr char kStartAndEnd[] = "--start-and-end";

void RunLibrary() {
    InitializeLibrary(false);
    UninitializeLibrary(true, false, true);
}

void StartAndEnd(benchmark::State& state) {
    for (auto _ : state) {
        RunLibrary();
    }
}
BENCHMARK(StartAndEnd);

void Process(benchmark::State& state, char const* what) {
    for (auto _ : state) {
        char name[] = "bench_Library";
        char* const arguments[] = {name, const_cast<char*>(what), nullptr};
        pid_t process = -1;
        int status = -1;
        if (posix_spawn(&process, "/proc/self/exe", nullptr, nullptr, arguments, environ) != 0 ||
            waitpid(process, &status, 0) != process || status != 0) {
            state.SkipWithError("cannot be run");
            return;
        }
    }
}
BENCHMARK_CAPTURE(Process, Library, kStartAndEnd)->UseRealTime();
BENCHMARK_CAPTURE(Process, Nothing, kNothing)->UseRealTime();

} // namespace

int main(int argc, char** argv) {
    ms_bVerbose = false;
    std::string_view const argument = argc == 2 ? argv[1] : "";
    if (argument == kNothing) {
        return 0;
    }
    if (argument == kStartAndEnd) {
        RunLibrary();
        return 0;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
