#pragma once

namespace Launcher {

class IElevationService;

/// The launcher's whole run, from starting the library to shutting it down: acquires the administrator right,
/// picks the guide beside the bundle, else the installer, else the uninstaller inside it, and starts the chosen
/// program as administrator with "-uname" and the user's name.
///
/// All paths come from `argv[0]`, which is expected to be <Bundle>.app/Contents/MacOS/<launcher>; shorter paths
/// are taken apart by the same removals. Progress goes to standard error, the launch status to standard output.
///
/// The result is the exit status: 0 when the program was started or the user cancelled at launch, else 1.
///
/// DELIBERATE: a cancel of the password dialog gives 1, a cancel at launch gives 0; callers see different exit
/// statuses for the two.
/// DELIBERATE: when `argv` is null, or the authorisation cannot be created or is not granted, the library stays
/// initialised; the class table is not printed and the init count keeps its unit.
/// DELIBERATE: the uninstaller is started without looking whether it exists; a missing one shows as the failed
/// launch's alert.
///
/// Threads: main thread.
int RunLauncher(char const* const* argv, IElevationService& elevation);

} // namespace Launcher
