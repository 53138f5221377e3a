#pragma once

#include "launcher/linux/BrokerProtocol.h"
#include "launcher/linux/StartProgram.h"
#include "launcher/linux/UniqueFd.h"

#include <memory>
#include <optional>
#include <sys/types.h>

namespace Launcher {

/// A helper program (broker, or dialog in one of its roles) with its socket to the launcher.
///
/// The helper has the other end of a packet socket as its standard input and /dev/null as its output. It leaves
/// when this end closes, so a launcher that is killed takes its helpers with it. Words count only when the helper
/// itself or root sent them; that nothing can be shown, or was cancelled, may also come from a program between.
///
/// Ownership: the process belongs to this object and is gone, or at least told to go, when it dies.
/// Threads: one thread at a time.
class HelperProcess {
  public:
    /// How long a helper that was told to leave may take, in milliseconds, before it is killed.
    static constexpr int kLeaveTimeOut = 2000;

    /// Null when the program cannot be started. `start.standardInput` is replaced. A `listener` (may be null) is
    /// the socket of `ListenForHelper`: the first connection from root to it takes the place of the pair.
    static std::unique_ptr<HelperProcess> Start(SProgramStart start, UniqueFd* listener = nullptr);

    ~HelperProcess();
    HelperProcess(HelperProcess const&) = delete;
    HelperProcess& operator=(HelperProcess const&) = delete;

    int Socket() const { return m_socket.Get(); }

    /// Blocks for the helper's next word, forever with -1, else at most that many milliseconds. `*unread` as in
    /// `ReceiveWord`.
    std::optional<EWord> Receive(int timeOut = -1, bool* unread = nullptr);

    /// Kills a helper that runs as the same user.
    void Kill();

    /// Blocks until the helper has ended, forever with -1, else at most that many milliseconds. The status is
    /// waitpid's; empty when it cannot be had.
    std::optional<int> WaitForExit(int timeOut = -1);

    /// Closes this end of the socket, which tells the helper to leave.
    void HangUp() { m_socket.Close(); }

  private:
    HelperProcess(UniqueFd socket, pid_t process) : m_socket(std::move(socket)), m_process(process) {}

    void WaitForConnection();
    bool IsFromHelper(SReceivedWord const& received) const;

    UniqueFd m_socket;
    UniqueFd m_listener; // closed once connected to
    pid_t m_process;     // -1 once waited for
};

} // namespace Launcher
