#pragma once

namespace Launcher {

/// The dialog program's roles. Alert: `alert <message> <information> <button>`. Agent: `agent <icon path>
/// <program>`, for the process that started it; the program is what the right is for, empty when that is not
/// known yet. Password prompt of sudo, which passes nothing but the prompt: recognised by the variable that carries
/// the icon path.
inline constexpr char kAlertRole[] = "alert";
inline constexpr char kAgentRole[] = "agent";
inline constexpr char kAskpassIconVariable[] = "QUILLMARK_ASKPASS_ICON";
inline constexpr char kAskpassProgramVariable[] = "QUILLMARK_ASKPASS_PROGRAM"; ///< as with the agent

/// What the password prompt of sudo begins with when it asks for the password of the user named after it. Other
/// prompts are those of sudo's own plug-ins and are shown as they are.
inline constexpr char kAskpassPasswordOf[] = "password-of:";

/// How long a display may take to answer, in seconds. The dialog program then gives up, saying so.
inline constexpr unsigned kDisplayTimeOut = 3;

} // namespace Launcher
