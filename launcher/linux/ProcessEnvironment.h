#pragma once

#include <string>
#include <vector>

namespace Launcher {

/// Makes this process fit to ask for the right, whatever it was started with: descriptors 0 to 2 are open
/// (/dev/null where they were closed), so that nothing else lands there; the ends of children can be seen; rights
/// that the program's file gave are dropped for good; and no other process of the user may look into this one or
/// take its descriptors.
void PrepareProcess();

/// Whether the program's file, by its set-user-id bit or otherwise, gave this process rights its caller lacks.
/// Still true after they were dropped.
bool HasRightsOfItsFile();

/// The whole environment of this process, for helpers that run as the same user.
std::vector<std::string> OwnEnvironment();

/// The part of it that a dialog needs when a program of the system stands between.
std::vector<std::string> DialogEnvironment();

/// The part of it that tells a program of another user where the display is, only values that pass
/// `IsDisplayVariable`: XAUTHORITY is completed from the home folder, WAYLAND_DISPLAY from the run-time folder.
std::vector<std::string> DisplayVariables();

} // namespace Launcher
