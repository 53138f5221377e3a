#pragma once

#include <ctime>

namespace VFoundation {

/// The local calendar time of a moment in seconds since 1970. False when the calendar cannot tell it.
bool LocalTime(long long seconds, std::tm& result) noexcept;

} // namespace VFoundation
