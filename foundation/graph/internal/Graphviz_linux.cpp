#include "foundation/graph/internal/Graphviz.h"

#include "foundation/host/VTemporaryFile.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace VFoundation {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kMostErrorText = 500;

std::string SystemReason(int error) {
    return std::system_category().message(error);
}

/// Both ends of a pipe, closed on exec.
class Pipe {
  public:
    Pipe() : m_isOpen(::pipe2(m_ends, O_CLOEXEC) == 0) {}
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;
    ~Pipe() {
        if (m_isOpen) {
            ::close(m_ends[0]);
            CloseWriteEnd();
        }
    }
    bool IsOpen() const noexcept { return m_isOpen; }
    int ReadEnd() const noexcept { return m_ends[0]; }
    int WriteEnd() const noexcept { return m_ends[1]; }
    void CloseWriteEnd() noexcept {
        if (m_ends[1] >= 0) {
            ::close(m_ends[1]);
            m_ends[1] = -1;
        }
    }

  private:
    int m_ends[2] = {-1, -1};
    bool m_isOpen;
};

/// Starts "dot" with these as its standard streams; its process, or the negative error number.
pid_t Start(int input, int output, int errors) {
    posix_spawn_file_actions_t actions;
    if (int const error = ::posix_spawn_file_actions_init(&actions)) {
        return -error;
    }
    pid_t process = -1;
    int error = 0;
    int const wanted[] = {input, output, errors};
    for (int stream = 0; stream < 3 && error == 0; ++stream) {
        error = ::posix_spawn_file_actions_adddup2(&actions, wanted[stream], stream);
    }
    char name[] = "dot";
    char format[] = "-Tsvg";
    char* arguments[] = {name, format, nullptr};
    if (error == 0) {
        error = ::posix_spawnp(&process, name, &actions, nullptr, arguments, environ);
    }
    ::posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? process : -error;
}

/// Collects what the program reports until it ends; false when that takes too long.
bool ReadErrors(int errors, Clock::time_point deadline, std::string& text) {
    for (;;) {
        auto const left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) {
            return false;
        }
        pollfd watched{errors, POLLIN, 0};
        int const ready = ::poll(&watched, 1, static_cast<int>(std::min<long long>(left, 60'000)));
        if (ready <= 0) {
            continue; // a signal, or the time is up
        }
        char bytes[256];
        ssize_t const got = ::read(errors, bytes, sizeof bytes);
        if (got == 0 || (got < 0 && errno != EINTR)) {
            return true;
        }
        if (got > 0 && text.size() < kMostErrorText) {
            text.append(bytes, static_cast<std::size_t>(got));
        }
    }
}

/// Waits until the program has ended; false when that takes too long. The status stays as it is when this process
/// ignores how its children end.
bool Await(pid_t process, Clock::time_point deadline, int& status) {
    for (;;) {
        pid_t const ended = ::waitpid(process, &status, WNOHANG);
        if (ended == process || (ended < 0 && errno != EINTR)) {
            return true;
        }
        if (Clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

bool ReadAll(std::FILE* stream, std::string& text) {
    std::rewind(stream);
    char bytes[4096];
    while (std::size_t const got = std::fread(bytes, 1, sizeof bytes, stream)) {
        text.append(bytes, got);
    }
    return std::ferror(stream) == 0 && !text.empty();
}

} // namespace

std::string RunGraphviz(std::string const& dot, int seconds, std::string& svg) {
    VTemporaryFile const input;
    VTemporaryFile const output;
    Pipe errors;
    if (!input.Stream() || !output.Stream() || !errors.IsOpen() ||
        std::fwrite(dot.data(), 1, dot.size(), input.Stream()) != dot.size() ||
        std::fseek(input.Stream(), 0, SEEK_SET) != 0) {
        return "no temporary file for Graphviz: " + SystemReason(errno);
    }
    pid_t const process = Start(::fileno(input.Stream()), ::fileno(output.Stream()), errors.WriteEnd());
    if (process < 0) {
        return process == -ENOENT ? "Graphviz is not installed (no program 'dot' in the PATH)"
                                  : "Graphviz cannot be started: " + SystemReason(-process);
    }
    errors.CloseWriteEnd();
    std::string reported;
    int status = 0;
    auto const deadline = Clock::now() + std::chrono::seconds(seconds);
    bool isInTime = ReadErrors(errors.ReadEnd(), deadline, reported);
    if (!Await(process, deadline, status)) { // it may have closed its errors and gone on
        isInTime = false;
        ::kill(process, SIGKILL);
        Await(process, Clock::time_point::max(), status);
    }
    if (!isInTime) {
        return "Graphviz took longer than " + std::to_string(seconds) + " s";
    }
    if (status != 0 || !ReadAll(output.Stream(), svg)) {
        std::string const line = reported.substr(0, reported.find('\n'));
        return "Graphviz failed" + (line.empty() ? line : ": " + line);
    }
    return {};
}

} // namespace VFoundation
