#pragma once

namespace Launcher {

/// Exit statuses of the helper programs. None is 1, 126 or 127: those are how sudo and pkexec themselves say
/// that nothing was run.
inline constexpr int kExitUnused = 0;      ///< nothing was asked of it
inline constexpr int kExitUsage = 64;      ///< not started by the launcher
inline constexpr int kExitBadInput = 65;   ///< its standard input is not the launcher's, or speaks otherwise
inline constexpr int kExitNoDisplay = 69;  ///< there is no display to show a dialog on
inline constexpr int kExitNotStarted = 70; ///< the program was not started
inline constexpr int kExitNotRoot = 77;    ///< it is not root
inline constexpr int kExitSetUserId = 78;  ///< its file, not its caller, gave it the rights it has

} // namespace Launcher
