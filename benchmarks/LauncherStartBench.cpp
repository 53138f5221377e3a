// What a start costs: the launcher's whole run, without its dialogs and with nothing to launch, beside the loading
// alone of a program that links the toolkit. The difference is why the dialogs are a program of their own.

#include "launcher/linux/StartProgram.h"

#include <benchmark/benchmark.h>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

void RunToTheEnd(benchmark::State& state, std::string const& program) {
    for (auto _ : state) {
        pid_t process = -1;
        if (Launcher::StartProgram({.path = program}, &process) != Launcher::EStartResult::eStarted) {
            state.SkipWithError("cannot be started");
            return;
        }
        ::waitpid(process, nullptr, 0);
    }
}

void LauncherWholeRun(benchmark::State& state) {
    if (::geteuid() != 0) {
        state.SkipWithError("needs root: another user is asked for a password");
        return;
    }
    fs::path const folder = fs::temp_directory_path() / ("launcher-start-" + std::to_string(::getpid()));
    fs::path const launcher = folder / "QuillmarkLauncher.app/Contents/MacOS/QuillmarkLauncher";
    fs::create_directories(launcher.parent_path());
    fs::copy_file(QUILLMARK_LAUNCHER, launcher);
    RunToTheEnd(state, launcher.string());
    fs::remove_all(folder);
}
BENCHMARK(LauncherWholeRun)->Unit(benchmark::kMillisecond)->UseRealTime();

// Without arguments the dialog program leaves before it uses what was loaded for it.
void ToolkitLoadingAlone(benchmark::State& state) {
    RunToTheEnd(state, QUILLMARK_DIALOG);
}
BENCHMARK(ToolkitLoadingAlone)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
