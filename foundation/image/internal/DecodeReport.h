#pragma once

#include <cstdarg>
#include <cstdio>

namespace VFoundation {

/// What a decoder tells about a picture besides its pixels. Plain memory, so that the callbacks of C libraries may write
/// it.
struct DecodeReport {
    bool hasAlpha = false;
    /// The number that the Exif standard gives it, 1 to 8; 1 without one.
    int orientation = 1;
    /// The file lacks what every Targa file ends with.
    bool footerIsMissing = false;
    /// Why there is no picture. Room for the messages of libjpeg.
    char reason[256] = "";

    /// Says why, unless that has been said.
    [[gnu::format(printf, 2, 3)]] void Fail(char const* format, ...) noexcept {
        std::va_list arguments;
        va_start(arguments, format);
        if (reason[0] == '\0') {
            std::vsnprintf(reason, sizeof reason, format, arguments);
        }
        va_end(arguments);
    }
};

} // namespace VFoundation
