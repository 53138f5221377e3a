#pragma once

#include "foundation/core/Export.h"

#include <cstdint>

namespace VFoundation {

/// A rectangle in pixels, given by its edges.
///
/// Ownership: a plain value.
/// Threads: as for any value.
struct VFOUNDATION_API SRect {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;

    bool operator==(SRect const&) const = default;

    /// Writes "left, top, right, bottom" and a terminator; cut to `size` bytes, nothing for a size of 0.
    void RectToString(char* buffer, unsigned long size) const;
    /// Reads such a text, as strictly as `SPoint::PointFromString`.
    bool RectFromString(char const* text);
};

} // namespace VFoundation
