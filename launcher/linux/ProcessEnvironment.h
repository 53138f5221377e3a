#pragma once

#include <string>
#include <vector>

namespace Launcher {

/// Opens /dev/null for each of descriptors 0 to 2 that is closed, so that nothing else lands there, and makes
/// the ends of children visible, which a parent may have switched off.
void PrepareProcess();

/// The whole environment of this process, for helpers that run as the same user.
std::vector<std::string> OwnEnvironment();

/// The part of it that a dialog needs when a program of the system stands between.
std::vector<std::string> DialogEnvironment();

/// The part of it that tells a program of another user where the display is, only values that pass
/// `IsDisplayVariable`: XAUTHORITY is completed from the home folder, WAYLAND_DISPLAY from the run-time folder.
std::vector<std::string> DisplayVariables();

} // namespace Launcher
