#include "launcher/linux/RootLaunch.h"

#include "launcher/linux/StartProgram.h"

#include <pwd.h>

namespace Launcher {

namespace {

std::vector<std::string> RootEnvironment(std::vector<std::string> const& displayVariables) {
    passwd const* const root = ::getpwuid(0);
    char const* const home = root && root->pw_dir ? root->pw_dir : "/root";
    std::vector<std::string> environment = {"PATH=/usr/sbin:/usr/bin:/sbin:/bin", std::string("HOME=") + home,
                                            "SHELL=/bin/sh", "USER=root", "LOGNAME=root"};
    environment.insert(environment.end(), displayVariables.begin(), displayVariables.end());
    return environment;
}

} // namespace

EWord LaunchAsRoot(SLaunchRequest const& request, int standardOutput, int standardError) {
    switch (StartProgram({.path = request.path,
                          .arguments = request.arguments,
                          .environment = RootEnvironment(request.environment),
                          .standardInput = -1,
                          .standardOutput = standardOutput,
                          .standardError = standardError,
                          .directory = "/"})) {
    case EStartResult::eStarted:
        return EWord::eStarted;
    case EStartResult::eNotExecutable:
        return EWord::eNotExecutable;
    case EStartResult::eNoProcess:
        break;
    }
    return EWord::eFailed;
}

} // namespace Launcher
