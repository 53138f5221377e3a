#include "launcher/linux/HelperProcess.h"

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Launcher {

namespace {

bool WaitReadable(int descriptor, int timeOut) {
    pollfd entry{descriptor, POLLIN, 0};
    int ready = 0;
    do {
        ready = ::poll(&entry, 1, timeOut);
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

} // namespace

std::unique_ptr<HelperProcess> HelperProcess::Start(SProgramStart start) {
    UniqueFd ours;
    UniqueFd theirs;
    pid_t process = -1;
    if (!MakePacketPair(ours, theirs)) {
        return nullptr;
    }
    start.standardInput = theirs.Get();
    if (StartProgram(start, &process) != EStartResult::eStarted) {
        return nullptr;
    }
    return std::unique_ptr<HelperProcess>(new HelperProcess(std::move(ours), process));
}

HelperProcess::~HelperProcess() {
    m_socket.Close();
    if (m_process < 0) {
        return;
    }
    UniqueFd const process(static_cast<int>(::syscall(SYS_pidfd_open, m_process, 0)));
    if (!process.IsOpen() || !WaitReadable(process.Get(), kLeaveTimeOut)) {
        ::kill(m_process, SIGKILL); // has no effect on a broker, which is root: that one leaves by itself
    }
    ::waitpid(m_process, nullptr, WNOHANG);
}

std::optional<EWord> HelperProcess::Receive(int timeOut, bool* unread) {
    if (timeOut >= 0 && !WaitReadable(m_socket.Get(), timeOut)) {
        return std::nullopt;
    }
    return ReceiveWord(m_socket.Get(), unread);
}

std::optional<int> HelperProcess::WaitForExit() {
    int status = 0;
    pid_t ended = -1;
    do {
        ended = ::waitpid(m_process, &status, 0);
    } while (ended < 0 && errno == EINTR);
    m_process = -1;
    return ended > 0 ? std::optional(status) : std::nullopt;
}

std::string HelperFolder() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}

} // namespace Launcher
