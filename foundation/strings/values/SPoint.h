#pragma once

#include "foundation/core/Export.h"

#include <cstdint>

namespace VFoundation {

/// A position in pixels.
///
/// Ownership: a plain value.
/// Threads: as for any value.
struct VFOUNDATION_API SPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;

    /// Room for the text of any point, rectangle or size.
    static constexpr unsigned long kTextSize = 64;

    bool operator==(SPoint const&) const = default;

    /// Writes "x, y" and a terminator; cut to `size` bytes, nothing for a size of 0.
    void PointToString(char* buffer, unsigned long size) const;
    /// Reads such a text: two decimal 32-bit numbers with a comma between, blanks only after the comma. False, with
    /// the point unchanged, for any other text and for null.
    bool PointFromString(char const* text);
};

} // namespace VFoundation
