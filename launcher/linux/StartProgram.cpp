#include "launcher/linux/StartProgram.h"

#include "launcher/linux/UniqueFd.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Launcher {

namespace {

constexpr int kFirstOtherDescriptor = 3;

std::vector<char*> Pointers(std::vector<std::string> const& texts, std::string const* first = nullptr) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 2);
    if (first) {
        pointers.push_back(const_cast<char*>(first->c_str()));
    }
    for (std::string const& text : texts) {
        pointers.push_back(const_cast<char*>(text.c_str()));
    }
    pointers.push_back(nullptr);
    return pointers;
}

// Everything the child does; between fork and execve only calls that are safe in a signal handler.
struct SChild {
    char const* path;
    char* const* arguments;
    char* const* environment;
    std::array<int, kFirstOtherDescriptor> streams;
    char const* directory;
    bool keepsTerminal;
    int resultPipe;

    [[noreturn]] void Run() const {
        if (!keepsTerminal) {
            ::setsid();
        }
        ResetSignals();
        EStartResult result = EStartResult::eNoProcess;
        if (PlaceStreams() && (!directory || ::chdir(directory) == 0)) {
            CloseOtherDescriptorsOnExec();
            ::execve(path, arguments, environment);
            result = EStartResult::eNotExecutable;
        }
        [[maybe_unused]] ssize_t const written = ::write(resultPipe, &result, sizeof(result));
        ::_exit(127);
    }

  private:
    static void ResetSignals() {
        for (int number = 1; number < NSIG; ++number) {
            ::signal(number, SIG_DFL);
        }
        sigset_t none;
        ::sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
    }

    // Copies first, so that a stream which itself is descriptor 0, 1 or 2 is not overwritten before its turn.
    bool PlaceStreams() const {
        std::array<int, kFirstOtherDescriptor> copies{};
        for (std::size_t i = 0; i < copies.size(); ++i) {
            copies[i] = ::fcntl(streams[i], F_DUPFD_CLOEXEC, kFirstOtherDescriptor);
            if (copies[i] < 0) {
                return false;
            }
        }
        for (std::size_t i = 0; i < copies.size(); ++i) {
            if (::dup2(copies[i], static_cast<int>(i)) < 0) {
                return false;
            }
        }
        return true;
    }

    static void CloseOtherDescriptorsOnExec() {
        if (::syscall(SYS_close_range, kFirstOtherDescriptor, ~0U, CLOSE_RANGE_CLOEXEC) == 0) {
            return;
        }
        long const limit = ::sysconf(_SC_OPEN_MAX);
        for (int descriptor = kFirstOtherDescriptor; descriptor < limit; ++descriptor) {
            ::fcntl(descriptor, F_SETFD, FD_CLOEXEC);
        }
    }
};

// Whether the process, running or ended but not waited for, got past execve. Unknown counts as yes: a process
// that cannot be looked at has become another user's.
bool HasExecuted(pid_t process) {
    constexpr unsigned long kForkedButNotExecuted = 0x40; // the kernel's PF_FORKNOEXEC
    std::array<char, 64> path{};
    std::array<char, 1024> line{};
    std::snprintf(path.data(), path.size(), "/proc/%d/stat", process);
    UniqueFd const file(::open(path.data(), O_RDONLY | O_CLOEXEC));
    unsigned long flags = 0;
    if (!file.IsOpen() || ::read(file.Get(), line.data(), line.size() - 1) <= 0) {
        return true;
    }
    char const* const nameEnd = std::strrchr(line.data(), ')'); // a name may hold blanks and more
    // then state, parent, group, session, terminal and its group
    return !nameEnd || std::sscanf(nameEnd + 1, " %*c %*d %*d %*d %*d %*d %lu", &flags) != 1 ||
           (flags & kForkedButNotExecuted) == 0;
}

// What the child reported. It reports nothing when execve closed the pipe, or when it was killed before.
EStartResult ReadResult(int pipe, pid_t process) {
    EStartResult result = EStartResult::eStarted;
    ssize_t received = 0;
    do {
        received = ::read(pipe, &result, sizeof(result));
    } while (received < 0 && errno == EINTR);
    if (received == static_cast<ssize_t>(sizeof(result))) {
        return result;
    }
    return HasExecuted(process) ? EStartResult::eStarted : EStartResult::eNoProcess;
}

} // namespace

EStartResult StartProgram(SProgramStart const& start, pid_t* process) {
    UniqueFd const null(::open("/dev/null", O_RDWR | O_CLOEXEC));
    int ends[2];
    if (!null.IsOpen() || ::pipe2(ends, O_CLOEXEC) != 0) {
        return EStartResult::eNoProcess;
    }
    UniqueFd const readEnd(ends[0]);
    UniqueFd writeEnd(ends[1]);

    auto const stream = [&null](int descriptor) { return descriptor < 0 ? null.Get() : descriptor; };
    std::vector<char*> const arguments = Pointers(start.arguments, &start.path);
    std::vector<char*> const environment = Pointers(start.environment);
    SChild const child{
        start.path.c_str(),
        arguments.data(),
        environment.data(),
        {stream(start.standardInput), stream(start.standardOutput), stream(start.standardError)},
        start.directory,
        start.keepsTerminal,
        writeEnd.Get()};
    pid_t const pid = ::fork();
    if (pid < 0) {
        return EStartResult::eNoProcess;
    }
    if (pid == 0) {
        child.Run();
    }
    writeEnd.Close();
    EStartResult const result = ReadResult(readEnd.Get(), pid);
    if (result != EStartResult::eStarted) {
        while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
        }
    } else if (process) {
        *process = pid;
    }
    return result;
}

} // namespace Launcher
