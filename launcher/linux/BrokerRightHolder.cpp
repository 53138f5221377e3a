#include "launcher/linux/BrokerRightHolder.h"

#include "launcher/linux/DialogRoles.h"
#include "launcher/linux/ProcessEnvironment.h"

#include <sys/wait.h>
#include <unistd.h>

namespace Launcher {

namespace {

// Registering an agent takes milliseconds; a bus that does not answer must not keep the user from being asked.
constexpr int kAgentTimeOut = 30000;

// A program that has nothing more to say ends at once.
constexpr int kEndTimeOut = 10000;

AuthorizationStatus PkexecRefusal(int exitStatus) {
    switch (exitStatus) {
    case 126: // dismissed
        return kCancelled;
    case 127: // refused, wrong password, or nobody to ask
        return kDenied;
    default:
        return kInternalFailure;
    }
}

AuthorizationStatus SudoRefusal(int exitStatus) {
    return exitStatus == 1 ? kDenied : kInternalFailure;
}

} // namespace

AuthorizationStatus BrokerRightHolder::StartBroker(SProgramStart start,
                                                   AuthorizationStatus (*refusal)(int exitStatus),
                                                   UniqueFd* listener) {
    m_broker = HelperProcess::Start(std::move(start), listener);
    if (!m_broker) {
        return kInternalFailure;
    }
    std::optional<EWord> word = m_broker->Receive();
    if (word == EWord::eReady) {
        return kAuthorized;
    }
    bool const isCancelled = word == EWord::eCancelled;
    while (word) { // whatever else is said, the socket closes when the program ends
        word = m_broker->Receive();
    }
    m_broker->HangUp(); // for one that does not speak as a broker does
    std::optional<int> const status = m_broker->WaitForExit(kEndTimeOut);
    m_broker.reset();
    if (!status || !WIFEXITED(*status)) {
        return kInternalFailure;
    }
    return isCancelled ? kCancelled : refusal(WEXITSTATUS(*status));
}

std::optional<AuthorizationStatus> BrokerRightHolder::Launch(SLaunchRequest const& request) {
    std::optional<std::string> const bytes = EncodeRequest(request);
    if (!bytes) {
        return kToolExecuteFailure; // longer than any program's arguments may be
    }
    std::unique_ptr<HelperProcess> const broker = std::move(m_broker);
    if (!broker || !SendRequest(broker->Socket(), *bytes, STDOUT_FILENO, STDERR_FILENO)) {
        return std::nullopt;
    }
    bool isUnread = false;
    std::optional<EWord> const word = broker->Receive(-1, &isUnread);
    if (!word && isUnread) {
        return std::nullopt;
    }
    return word ? LaunchStatus(*word) : kInternalFailure;
}

AuthorizationStatus PolkitRightHolder::Ask(std::string const& iconPath) {
    std::unique_ptr<HelperProcess> const agent = HelperProcess::Start(
        {.path = Paths().dialog, .arguments = {kAgentRole, iconPath}, .environment = OwnEnvironment()});
    if (agent) {
        agent->Receive(
            kAgentTimeOut); // without a display it leaves instead, and pkexec decides what that means
    }
    return StartBroker({.path = Paths().pkexec,
                        .arguments = {"--disable-internal-agent", Paths().broker},
                        .environment = {"PATH=/usr/bin:/bin"}}, // odd values in others make it refuse
                       PkexecRefusal);
}

AuthorizationStatus SudoRightHolder::Ask(std::string const& iconPath) {
    UniqueFd listener; // sudo may put a pipe between the broker and what it inherits
    std::string name;
    if (!ListenForHelper(listener, name)) {
        return kInternalFailure;
    }
    std::vector<std::string> environment = DialogEnvironment();
    environment.push_back("SUDO_ASKPASS=" + Paths().dialog);
    environment.push_back(std::string(kAskpassIconVariable) + "=" + iconPath);
    return StartBroker({.path = Paths().sudo,
                        .arguments = {"-A", "-p", "Password of %p:", "--", Paths().broker, name},
                        .environment = std::move(environment)},
                       SudoRefusal, &listener);
}

} // namespace Launcher
