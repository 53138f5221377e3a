#pragma once

#include "launcher/linux/BrokerProtocol.h"

#include <string>

namespace Launcher {

/// Who can change a file, or exchange it.
enum class EWriters {
    eRootAlone, ///< root owns the file and every folder above it, and no one else may write to any of them
    eOthers,
    eUnknown, ///< it cannot be told: a link on the way, or something that is not there
};

/// Looks at each component of an absolute path without links. Entries of an access list count: a file that has
/// one shows their limit as its group's permissions.
EWriters WritersOf(std::string const& path);

/// The broker's rule for what it starts. A broker that only root can change or exchange belongs to a protected
/// bundle: it starts only the guide, the installer and the uninstaller of that bundle, no less protected than
/// itself, with exactly "-uname" and `userName`. `request.path` then becomes the path without links, which
/// only root can exchange. A broker that others can write starts what it is told, as whoever
/// could ask for something else could replace the broker as well.
///
/// `brokerPath` is the broker's own file, without links.
bool IsAllowedTarget(std::string const& brokerPath, std::string const& userName, SLaunchRequest& request);

} // namespace Launcher
