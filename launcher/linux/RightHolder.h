#pragma once

#include "launcher/IElevationService.h"
#include "launcher/linux/BrokerProtocol.h"

#include <memory>
#include <string>

namespace Launcher {

/// Where the launcher finds the programs that work for it.
struct SHelperPaths {
    std::string broker;
    std::string dialog;
    std::string pkexec = "/usr/bin/pkexec";
    std::string sudo = "/usr/bin/sudo";
    std::string systemBus = "/run/dbus/system_bus_socket";

    /// The helpers in the folder of the running program; the programs of the system at fixed paths.
    static SHelperPaths Installed();
};

/// What the user is told when asked for the right.
struct SRightQuestion {
    std::string iconPath; ///< picture for the dialog
    std::string program;  ///< what is to start; empty when that is not chosen yet
};

/// One way to hold the administrator right from the moment it is granted to the launch.
///
/// Ownership: owned by the authorisation it works for.
/// Threads: one thread at a time.
class IRightHolder {
  public:
    virtual ~IRightHolder() = default;

    /// Asks for the right: in a dialog, or on the terminal where there is no display. Blocks for the answer.
    virtual AuthorizationStatus Ask(SRightQuestion const& question) = 0;

    /// Launches with the right that `Ask` got, which is used up by it. Empty when the right was lost before the
    /// request was read: nothing was started then, and asking again is safe.
    virtual std::optional<AuthorizationStatus> Launch(SLaunchRequest const& request) = 0;
};

/// The holder for this process: itself when it is root already, else polkit, else sudo, else null. Asks nothing.
std::unique_ptr<IRightHolder> ChooseRightHolder(SHelperPaths const& paths);

/// The launch status that a broker's word stands for.
AuthorizationStatus LaunchStatus(EWord word);

} // namespace Launcher
