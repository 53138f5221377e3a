// Runs a fuzz target without libFuzzer: every file of a folder as it is, cut at many lengths and with single bytes
// changed, the same ones every time. On a crash it names the input that was running and saves it.
// Usage: fuzz_<name> FOLDER-OR-FILE...

#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

// Present when the address sanitizer is.
extern "C" [[gnu::weak]] void __sanitizer_set_death_callback(void (*callback)());
extern "C" [[gnu::weak]] void __sanitizer_set_report_fd(void* descriptor);

namespace {

using fuzzing::Say;
using Input = std::vector<std::uint8_t>;

constexpr std::size_t kCutsOfAFile = 150;
constexpr std::size_t kChangesOfAFile = 150;
constexpr char kLastInput[] = "crash-input";
constexpr std::array kSignals = {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL};

char s_description[512];
Input const* s_running = nullptr;
struct sigaction s_previous[NSIG];

/// Only calls that a signal handler may make.
void NameTheInput() {
    Say("fuzz replay: died of ");
    Say(s_description);
    Say(", saved as ");
    Say(kLastInput);
    Say("\n");
    if (std::FILE* const file = s_running ? std::fopen(kLastInput, "wb") : nullptr) {
        std::fwrite(s_running->data(), 1, s_running->size(), file);
        std::fclose(file);
    }
}

void OnSignal(int number) {
    NameTheInput();
    ::sigaction(number, &s_previous[number],
                nullptr); // what failed fails again, and ends as without this handler
}

void Run(Input const& input, std::string const& description) {
    description.copy(s_description, sizeof s_description - 1);
    s_description[std::min(description.size(), sizeof s_description - 1)] = '\0';
    // A block of exactly this size, so that reading past its end is seen.
    Input const exact(input);
    s_running = &exact;
    LLVMFuzzerTestOneInput(exact.data(), exact.size());
    s_running = nullptr;
}

void RunWithHostileKin(std::string const& path) {
    std::ifstream file(path, std::ios::binary);
    Input const whole{std::istreambuf_iterator<char>(file), {}};
    Run(whole, path);
    std::size_t const step = 1 + whole.size() / kCutsOfAFile;
    for (std::size_t length = 0; length < whole.size(); length += step) {
        Run(Input(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length)),
            path + " cut to " + std::to_string(length));
    }
    std::minstd_rand random(static_cast<unsigned>(whole.size()) + 1);
    for (std::size_t i = 0; i < kChangesOfAFile && !whole.empty(); ++i) {
        Input changed = whole;
        std::size_t const at = random() % changed.size();
        changed[at] = static_cast<std::uint8_t>(random());
        Run(changed, path + " with byte " + std::to_string(at) + " made " + std::to_string(changed[at]));
    }
}

/// The library reports bad input on the standard error stream, which here would be all that is seen.
void SilenceErrors() {
    if (__sanitizer_set_report_fd) {
        __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<std::intptr_t>(::dup(STDERR_FILENO))));
    }
    static_cast<void>(!std::freopen("/dev/null", "w", stderr));
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> paths;
    for (int i = 1; i < argc; ++i) {
        if (!std::filesystem::is_directory(argv[i])) {
            paths.emplace_back(argv[i]);
            continue;
        }
        for (auto const& entry : std::filesystem::directory_iterator(argv[i])) {
            paths.push_back(entry.path().string());
        }
    }
    if (paths.empty()) {
        Say("fuzz replay: no inputs\n");
        return EXIT_FAILURE;
    }
    std::sort(paths.begin(), paths.end());
    SilenceErrors();
    for (int const number : kSignals) {
        struct sigaction action {};
        action.sa_handler = &OnSignal;
        ::sigaction(number, &action, &s_previous[number]);
    }
    if (__sanitizer_set_death_callback) {
        __sanitizer_set_death_callback(&NameTheInput);
    }
    for (std::string const& path : paths) {
        RunWithHostileKin(path);
    }
    std::printf("%zu files and what was made of them\n", paths.size());
    return EXIT_SUCCESS;
}
