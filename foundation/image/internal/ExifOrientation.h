#pragma once

#include <cstddef>

namespace VFoundation {

/// The orientation in the Exif data of a picture (a TIFF header and its first directory): 1 to 8, or 0 when it has none.
int ExifOrientation(unsigned char const* bytes, std::size_t count) noexcept;

} // namespace VFoundation
