#pragma once

#include "launcher/linux/BrokerProtocol.h"
#include "launcher/linux/StartProgram.h"
#include "launcher/linux/UniqueFd.h"

#include <memory>
#include <optional>
#include <sys/types.h>

namespace Launcher {

/// A helper program (broker, or dialog in one of its roles) with its line to the launcher.
///
/// The helper has the other end of a packet socket as its standard input and /dev/null as its output. It leaves
/// when this end closes, so a launcher that is killed takes its helpers with it.
///
/// Ownership: the process belongs to this object and is gone, or at least told to go, when it dies.
/// Threads: one thread at a time.
class HelperProcess {
  public:
    /// How long a helper that was told to leave may take, in milliseconds, before it is killed.
    static constexpr int kLeaveTimeOut = 2000;

    /// Null when the program cannot be started. `start.standardInput` is replaced.
    static std::unique_ptr<HelperProcess> Start(SProgramStart start);

    ~HelperProcess();
    HelperProcess(HelperProcess const&) = delete;
    HelperProcess& operator=(HelperProcess const&) = delete;

    int Socket() const { return m_socket.Get(); }

    /// Blocks for the helper's next word, for ever with -1, else at most that many milliseconds.
    std::optional<EWord> Receive(int timeOut = -1, bool* unread = nullptr);

    /// Blocks until the helper has ended. The status is waitpid's; empty when it cannot be had.
    std::optional<int> WaitForExit();

  private:
    HelperProcess(UniqueFd socket, pid_t process) : m_socket(std::move(socket)), m_process(process) {}

    UniqueFd m_socket;
    pid_t m_process; // -1 once waited for
};

/// The folder of this program's own file, where the helpers are, ending without '/'; empty when unknown. Taken
/// from the running process, never from its arguments.
std::string HelperFolder();

} // namespace Launcher
