#pragma once

#include <cstdarg>
#include <cstddef>

namespace VFoundation {

/// As `std::vsnprintf`, with the same result.
///
/// Formats of texts ("%s"), characters ("%c") and whole numbers ("%i", "%d", "%u", also with 'l') without flags, width
/// or precision are written here, several times as fast as by the C library: most lines of logs and descriptions have
/// such a format. The C library does all others.
[[gnu::format(printf, 3, 0)]] int FormatText(char* out, std::size_t size, char const* format,
                                             std::va_list arguments) noexcept;

} // namespace VFoundation
