#pragma once

#include "foundation/core/Export.h"

#include <cstdint>

namespace VFoundation {

/// An extent in pixels.
///
/// Ownership: a plain value.
/// Threads: as for any value.
struct VFOUNDATION_API SSize {
    std::int32_t width = 0;
    std::int32_t height = 0;

    bool operator==(SSize const&) const = default;

    /// Writes "width, height" and a terminator; cut to `size` bytes, nothing for a size of 0.
    void SizeToString(char* buffer, unsigned long size) const;
    /// Reads such a text, as strictly as `SPoint::PointFromString`.
    bool SizeFromString(char const* text);
};

} // namespace VFoundation
