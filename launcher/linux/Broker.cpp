// The broker: runs as root between the moment the user has granted the right and the launch, so that asking and
// launching can be two steps. It speaks only over its standard input, takes one request, starts at most one
// program and leaves; without a request it leaves when the launcher does.

#include "launcher/linux/HelperExit.h"
#include "launcher/linux/RootLaunch.h"

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kSocket = STDIN_FILENO;

} // namespace

int main() {
    using namespace Launcher;
    if (!IsPacketSocket(kSocket)) {
        return kExitBadInput;
    }
    if (::geteuid() != 0 || ::setresgid(0, 0, 0) != 0 || ::setresuid(0, 0, 0) != 0) {
        return kExitNotRoot;
    }
    ::signal(SIGCHLD, SIG_DFL); // a parent that ignores it would hide how the program started
    ::umask(022);

    SReceivedRequest received;
    if (!SendWord(kSocket, EWord::eReady)) {
        return kExitUnused;
    }
    switch (ReceiveRequest(kSocket, received)) {
    case EReceived::eClosed:
        return kExitUnused;
    case EReceived::eMalformed:
        SendWord(kSocket, EWord::eFailed);
        return kExitBadInput;
    case EReceived::eRequest:
        break;
    }
    EWord const outcome =
        LaunchAsRoot(received.request, received.standardOutput.Get(), received.standardError.Get());
    SendWord(kSocket, outcome);
    return outcome == EWord::eStarted ? 0 : kExitNotStarted;
}
