#pragma once

#include <string>

namespace Launcher {

/// Registers this program as polkit's agent for the process that started it, says so on standard input, and
/// answers polkit's questions with the password dialog until the other end of standard input closes. `program` is what
/// the right is for, empty when that is not known yet.
///
/// The result is an exit status, when the agent could not be registered; otherwise it does not return.
int RunPolkitAgent(std::string const& iconPath, std::string const& program);

} // namespace Launcher
