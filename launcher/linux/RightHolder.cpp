#include "launcher/linux/RightHolder.h"

#include "launcher/linux/BrokerRightHolder.h"
#include "launcher/linux/BundlePlaces.h"
#include "launcher/linux/HelperProcess.h"
#include "launcher/linux/RootLaunch.h"

#include <sys/stat.h>
#include <unistd.h>

namespace Launcher {

namespace {

// A process that is root already has the right itself.
class DirectRightHolder final : public IRightHolder {
  public:
    AuthorizationStatus Ask(SRightQuestion const&) override { return kAuthorized; }

    std::optional<AuthorizationStatus> Launch(SLaunchRequest const& request) override {
        return LaunchStatus(LaunchAsRoot(request, STDOUT_FILENO, STDERR_FILENO));
    }
};

bool IsSocket(std::string const& path) {
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode);
}

bool IsExecutable(std::string const& path) {
    return ::access(path.c_str(), X_OK) == 0;
}

} // namespace

SHelperPaths SHelperPaths::Installed() {
    std::string const folder = HelperFolder();
    return {.broker = folder + "/QuillmarkBroker", .dialog = folder + "/QuillmarkDialog"};
}

std::unique_ptr<IRightHolder> ChooseRightHolder(SHelperPaths const& paths) {
    if (::geteuid() == 0) {
        return std::make_unique<DirectRightHolder>();
    }
    if (IsExecutable(paths.pkexec) && IsSocket(paths.systemBus)) {
        return std::make_unique<PolkitRightHolder>(paths);
    }
    if (IsExecutable(paths.sudo)) {
        return std::make_unique<SudoRightHolder>(paths);
    }
    return nullptr;
}

AuthorizationStatus LaunchStatus(EWord word) {
    switch (word) {
    case EWord::eStarted:
        return kAuthorized;
    case EWord::eNotExecutable:
        return kToolExecuteFailure;
    default:
        return kInternalFailure;
    }
}

} // namespace Launcher
