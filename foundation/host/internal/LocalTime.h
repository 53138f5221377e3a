#pragma once

#include <cstddef>
#include <ctime>

namespace VFoundation {

/// The local calendar time of a moment in seconds since 1970. False when the calendar does not reach that far.
bool LocalTime(long long seconds, std::tm& result) noexcept;

/// Room for the text of any moment.
inline constexpr std::size_t kLocalTimeTextSize = 80;

/// Writes the local time as "Sun Nov  1 09:05:00 2026", in every locale. Empty when the calendar does not
/// reach that far.
void FormatLocalTime(long long seconds, char (&text)[kLocalTimeTextSize]) noexcept;

} // namespace VFoundation
