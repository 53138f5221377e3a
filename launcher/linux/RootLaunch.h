#pragma once

#include "launcher/linux/BrokerProtocol.h"

namespace Launcher {

/// Starts the requested program as root; for processes that already are root. The program gets standard input
/// from /dev/null, the two given descriptors (borrowed; -1 is /dev/null), a session and working directory of its
/// own, and a fresh environment: the basic variables of root and those of the display that the request carries.
///
/// The result is `eStarted`, `eNotExecutable` or `eFailed`.
EWord LaunchAsRoot(SLaunchRequest const& request, int standardOutput, int standardError);

} // namespace Launcher
