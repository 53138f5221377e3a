// The broker: runs as root between the moment the user has granted the right and the launch, so that asking and
// launching can be two steps. It takes one request from the launcher that it was started for, starts at most one
// program and leaves; without a request it leaves when the launcher does.
//
// Its socket is its standard input. sudo may put a pipe there to log what passes, so a name can be given instead,
// under which the launcher listens.

#include "launcher/linux/CleanStart.h"
#include "launcher/linux/HelperExit.h"
#include "launcher/linux/ProtectedBundle.h"
#include "launcher/linux/RootLaunch.h"

#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <pwd.h>
#include <sys/auxv.h>
#include <unistd.h>

namespace {

using namespace Launcher;

bool BecomeRoot() {
    return ::getuid() == 0 && ::setresgid(0, 0, 0) == 0 && ::setresuid(0, 0, 0) == 0;
}

// The user who started pkexec or sudo. pkexec passes nothing of the user's environment on, and sudo always sets
// its own variable, so the order matters: sudo may pass on a PKEXEC_UID that the user made up.
uid_t AskingUser() {
    for (char const* const name : {"SUDO_UID", "PKEXEC_UID"}) {
        if (char const* const value = std::getenv(name)) {
            uid_t user = 0;
            char const* const end = value + std::strlen(value);
            auto const result = std::from_chars(value, end, user);
            return result.ec == std::errc() && result.ptr == end ? user : static_cast<uid_t>(-1);
        }
    }
    return ::getuid(); // started by root itself
}

std::string NameOf(uid_t user) {
    passwd const* const entry = ::getpwuid(user);
    return entry ? entry->pw_name : "";
}

EWord Launch(SReceivedRequest& received, uid_t user) {
    std::string const ownPath = std::filesystem::read_symlink("/proc/self/exe").string();
    if (!IsAllowedTarget(ownPath, NameOf(user), received.request)) {
        return EWord::eNotExecutable;
    }
    ResetInheritedState(received.standardError.Get());
    return LaunchAsRoot(received.request, received.standardOutput.Get(), received.standardError.Get());
}

int Serve(int socket) {
    uid_t const user = AskingUser();
    SPeer const launcher = PeerOf(socket);
    if (launcher.process <= 0 || launcher.user != user) {
        return kExitBadInput;
    }
    if (!SendWord(socket, EWord::eReady)) {
        return kExitUnused;
    }
    SReceivedRequest received;
    EReceived const what = ReceiveRequest(socket, received);
    if (what == EReceived::eClosed) {
        return kExitUnused;
    }
    if (what != EReceived::eRequest || received.sender != launcher) {
        SendWord(socket, EWord::eFailed);
        return kExitBadInput;
    }
    EWord const outcome = Launch(received, user);
    SendWord(socket, outcome);
    return outcome == EWord::eStarted ? 0 : kExitNotStarted;
}

} // namespace

int main(int argc, char** argv) {
    if (::getauxval(AT_SECURE) != 0) {
        return kExitSetUserId;
    }
    if (!BecomeRoot()) {
        return kExitNotRoot;
    }
    ::signal(SIGCHLD, SIG_DFL); // a parent that ignores it would hide how the program started
    ::signal(SIGPIPE, SIG_IGN); // the launcher's standard error may be closed
    UniqueFd connection;
    if (argc > 1 && !ConnectToLauncher(argv[1], connection)) {
        return kExitBadInput;
    }
    int const socket = connection.IsOpen() ? connection.Get() : STDIN_FILENO;
    if (!IsPacketSocket(socket) || !ShowSenders(socket)) {
        return kExitBadInput;
    }
    try {
        return Serve(socket);
    } catch (...) { // no memory
        SendWord(socket, EWord::eFailed);
        return kExitNotStarted;
    }
}
