#pragma once

namespace Launcher {

/// The dialog program's roles. Alert: `alert <message> <information> <button>`. Agent: `agent <icon path>`, for
/// the process that started it. Password prompt of sudo, which passes nothing but the prompt: recognised by the
/// variable that carries the icon path.
inline constexpr char kAlertRole[] = "alert";
inline constexpr char kAgentRole[] = "agent";
inline constexpr char kAskpassIconVariable[] = "QUILLMARK_ASKPASS_ICON";

} // namespace Launcher
