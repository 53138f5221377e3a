#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace Launcher {

/// What a program is started with. Nothing else reaches it: no other descriptor, no other variable, default
/// signal handling, a session of its own unless it is to ask on the terminal.
struct SProgramStart {
    std::string path;                          ///< absolute; never searched for, never given to a shell
    std::vector<std::string> arguments = {};   ///< those after the program's own name, which is `path`
    std::vector<std::string> environment = {}; ///< "NAME=value"
    int standardInput = -1;                    ///< borrowed; -1 is /dev/null
    int standardOutput = -1;                   ///< borrowed; -1 is /dev/null
    int standardError = -1;                    ///< borrowed; -1 is /dev/null
    char const* directory = nullptr;           ///< working directory; null is the caller's
    bool keepsTerminal = false;                ///< stays in the caller's session, with its terminal
};

enum class EStartResult {
    eStarted,
    eNotExecutable, ///< execve refused: missing, not permitted, ill-formed, a directory, too long
    eNoProcess,     ///< there was no process, pipe or /dev/null to try it with, or it ended before it could
};

/// Starts a program and tells whether it really runs: the result comes after execve has succeeded or failed. A
/// program that ends at once was started.
/// `*process` is set only for `eStarted`; the caller waits for that process or leaves it to process 1.
///
/// Threads: any.
EStartResult StartProgram(SProgramStart const& start, pid_t* process = nullptr);

} // namespace Launcher
