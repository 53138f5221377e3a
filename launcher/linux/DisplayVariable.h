#pragma once

#include <string_view>

namespace Launcher {

/// Whether "NAME=value" may reach a program that runs as root. DISPLAY is [host]:number[.screen], XAUTHORITY and
/// WAYLAND_DISPLAY are absolute paths without "." and "..", the latter short enough for a socket's name, LANG is
/// language[_territory][.codeset][@modifier]; all are bounded and free of control characters.
bool IsDisplayVariable(std::string_view variable);

} // namespace Launcher
