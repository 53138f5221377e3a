#include "launcher/linux/BrokerRightHolder.h"

#include "launcher/linux/BundlePlaces.h"
#include "launcher/linux/DialogRoles.h"
#include "launcher/linux/Messages.h"
#include "launcher/linux/ProcessEnvironment.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Launcher {

namespace {

// Registering an agent takes milliseconds, and a display that does not answer ends it after `kDisplayTimeOut`; a
// bus that does not answer must not keep the user from being asked.
constexpr int kAgentTimeOut = 10000;

// A program that has nothing more to say ends at once.
constexpr int kEndTimeOut = 10000;

UniqueFd OpenTerminal() {
    return UniqueFd(::open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC));
}

AuthorizationStatus PkexecRefusal(int exitStatus) {
    switch (exitStatus) {
    case 126: // dismissed
        return kCancelled;
    case 127: // refused, wrong password, or no agent to ask
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
    m_displayWorks = m_displayWorks && word != EWord::eNoDisplay;
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

AuthorizationStatus BrokerRightHolder::StartThroughSudo(std::vector<std::string> options,
                                                        SProgramStart start) {
    UniqueFd listener; // sudo may put a pipe between the broker and what it inherits
    std::string name;
    if (!ListenForHelper(listener, name)) {
        return kInternalFailure;
    }
    start.path = Paths().sudo;
    start.arguments = std::move(options);
    start.arguments.insert(start.arguments.end(), {"--", Paths().broker, name});
    return StartBroker(std::move(start), SudoRefusal, &listener);
}

bool BrokerRightHolder::CanAskOnTerminal() const {
    UniqueFd const terminal = OpenTerminal();
    return !m_displayWorks && ::access(Paths().sudo.c_str(), X_OK) == 0 && terminal.IsOpen() &&
           ::tcgetpgrp(terminal.Get()) == ::getpgrp(); // in the background it would stop instead
}

AuthorizationStatus BrokerRightHolder::AskOnTerminal() {
    UniqueFd const terminal = OpenTerminal();
    std::string const prompt =
        Translated("{bundle} asks for administrator rights. Password of {user}: ",
                   {{"bundle", OwnBundle().name}, {"user", "%p"}}); // sudo's place for the name
    return StartThroughSudo({"-p", prompt}, {.path = {},
                                             .environment = DialogEnvironment(),
                                             .standardError = terminal.Get(),
                                             .keepsTerminal = true});
}

AuthorizationStatus PolkitRightHolder::Ask(SRightQuestion const& question) {
    std::unique_ptr<HelperProcess> const agent =
        HelperProcess::Start({.path = Paths().dialog,
                              .arguments = {kAgentRole, question.iconPath, question.program},
                              .environment = OwnEnvironment()});
    bool const isShown = agent && agent->Receive(kAgentTimeOut) == EWord::eReady;
    SetDisplayWorks(isShown);
    if (agent && !isShown) { // pkexec decides what that means
        agent->Kill();
    }
    AuthorizationStatus const status =
        StartBroker({.path = Paths().pkexec,
                     .arguments = {"--disable-internal-agent", Paths().broker},
                     .environment = {"PATH=/usr/bin:/bin"}}, // odd values in others make it refuse
                    PkexecRefusal);
    return status == kDenied && CanAskOnTerminal() ? AskOnTerminal() : status;
}

AuthorizationStatus SudoRightHolder::Ask(SRightQuestion const& question) {
    std::vector<std::string> environment = DialogEnvironment();
    environment.push_back("SUDO_ASKPASS=" + Paths().dialog);
    environment.push_back(std::string(kAskpassIconVariable) + "=" + question.iconPath);
    environment.push_back(std::string(kAskpassProgramVariable) + "=" + question.program);
    SetDisplayWorks(true);
    AuthorizationStatus const status = StartThroughSudo({"-A", "-p", std::string(kAskpassPasswordOf) + "%p"},
                                                        {.path = {}, .environment = std::move(environment)});
    return status == kDenied && CanAskOnTerminal() ? AskOnTerminal() : status;
}

} // namespace Launcher
