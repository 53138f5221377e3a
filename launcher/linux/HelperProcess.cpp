#include "launcher/linux/HelperProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Launcher {

namespace {

constexpr uid_t kRoot = 0;

bool WaitReadable(int descriptor, int timeOut) {
    pollfd entry{descriptor, POLLIN, 0};
    int ready = 0;
    do {
        ready = ::poll(&entry, 1, timeOut);
    } while (ready < 0 && errno == EINTR);
    return ready > 0;
}

bool HasEnded(pid_t child, int timeOut) {
    UniqueFd const process(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
    return process.IsOpen() && WaitReadable(process.Get(), timeOut);
}

} // namespace

std::unique_ptr<HelperProcess> HelperProcess::Start(SProgramStart start, UniqueFd* listener) {
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
    std::unique_ptr<HelperProcess> helper(new HelperProcess(std::move(ours), process));
    if (listener) {
        helper->m_listener = std::move(*listener);
    }
    return helper;
}

HelperProcess::~HelperProcess() {
    m_socket.Close();
    m_listener.Close();
    if (m_process < 0) {
        return;
    }
    // A broker is root, so it cannot be killed; it leaves by itself.
    if (!HasEnded(m_process, kLeaveTimeOut) && ::kill(m_process, SIGKILL) == 0) {
        HasEnded(m_process, kLeaveTimeOut);
    }
    ::waitpid(m_process, nullptr, WNOHANG);
}

std::optional<EWord> HelperProcess::Receive(int timeOut, bool* unread) {
    WaitForConnection();
    if (timeOut >= 0 && !WaitReadable(m_socket.Get(), timeOut)) {
        return std::nullopt;
    }
    std::optional<SReceivedWord> const received = ReceiveWord(m_socket.Get(), unread);
    return received && IsFromHelper(*received) ? std::optional(received->word) : std::nullopt;
}

// Until the helper has connected, or something can be read from the pair; at once without a listener.
void HelperProcess::WaitForConnection() {
    while (m_listener.IsOpen()) {
        std::array<pollfd, 2> entries{{{m_listener.Get(), POLLIN, 0}, {m_socket.Get(), POLLIN, 0}}};
        if (::poll(entries.data(), entries.size(), -1) < 0) {
            continue;
        }
        if (UniqueFd connection; AcceptHelper(m_listener.Get(), kRoot, connection)) {
            m_socket = std::move(connection);
            m_listener.Close();
        } else if (entries[1].revents != 0) {
            return;
        }
    }
}

bool HelperProcess::IsFromHelper(SReceivedWord const& received) const {
    return received.sender.process == m_process || received.sender.user == kRoot ||
           received.word == EWord::eCancelled || received.word == EWord::eNoDisplay;
}

void HelperProcess::Kill() {
    if (m_process > 0) {
        ::kill(m_process, SIGKILL);
    }
}

std::optional<int> HelperProcess::WaitForExit(int timeOut) {
    if (timeOut >= 0 && !HasEnded(m_process, timeOut)) {
        return std::nullopt;
    }
    int status = 0;
    pid_t ended = -1;
    do {
        ended = ::waitpid(m_process, &status, 0);
    } while (ended < 0 && errno == EINTR);
    m_process = -1;
    return ended > 0 ? std::optional(status) : std::nullopt;
}

} // namespace Launcher
