#pragma once

#include <string>

namespace Launcher {

/// The folder of this program's own file, where the helpers are, ending without '/'; empty when unknown. Taken
/// from the running process, never from its arguments.
std::string HelperFolder();

/// The folder of pictures and texts of this program's own bundle.
std::string ResourcesFolder();

/// This program's own bundle, for showing it to people.
struct SOwnBundle {
    std::string path;   ///< of the bundle
    std::string name;   ///< without folder and ".app"
    std::string folder; ///< name of the folder that holds it
};
SOwnBundle OwnBundle();

} // namespace Launcher
