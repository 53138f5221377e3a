#pragma once

namespace Launcher {

/// Gives this process, and what it starts, the state of a program that the system itself started: limits,
/// processors and out-of-memory score of process 1, ordinary scheduling, nice 0, file mode mask 022 and the
/// groups of root. The user who asked set all of these until now, and could end a program in the middle of a
/// write with them. For processes that are root on a user's behalf.
///
/// What the system refuses stays as it is; a line on descriptor `trace` says so.
void ResetInheritedState(int trace);

} // namespace Launcher
