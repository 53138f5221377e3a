#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/NarrowCast.h"

#include <cstdint>

namespace VFoundation {

class VString;

/// A colour with alpha, eight bits a component.
///
/// Set the components through `iSetRGBA`, which keeps them in range and the 16-bit copies right.
///
/// DELIBERATE: a 16-bit copy is the component shifted left by 8; white is 65280, not 65535.
///
/// Ownership: a value.
/// Threads: as for any value.
struct VFOUNDATION_API SColour {
    /// What `GetColourAsString` writes.
    enum eStyle : long {
        /// "255, 128, 0, 255"
        eList = 0,
        /// "[r:255 g:128 b:0 a:255]"
        eTagged = 1
    };

    /// Opaque black.
    SColour() noexcept : SColour(0, 0, 0, 255) {}
    /// Clamps components to 0 to 255.
    SColour(int r, int g, int b, int a) noexcept { iSetRGBA(r, g, b, a); }
    /// Red in bits 0 to 7, green in 8 to 15, blue in 16 to 23. Bits 24 to 31 are ignored: the colour is opaque.
    explicit SColour(unsigned long packed) noexcept
        : SColour(Byte(packed, 0), Byte(packed, 8), Byte(packed, 16), 255) {}
    SColour(SColour const&) = default;
    SColour& operator=(SColour const&) = default;
    virtual ~SColour() = default;

    void iSetRGBA(int r, int g, int b, int a) noexcept;
    /// Same red, green, blue and alpha.
    bool IsSameColour(SColour const& other) const noexcept;

    /// Empty for a style that is not one of `eStyle`.
    VString GetColourAsString(long style) const;
    static VString GetColourAsString(SColour const& colour, long style);
    /// Reads three or four components (alpha 255 by default), separated by commas or else by blanks, in either style;
    /// or the name of a named colour, ignoring case. Other text leaves the colour as it was.
    /// DELIBERATE: each component counts from its first digit on; "-5" is 5, and "x" is 0.
    /// DELIBERATE: a name sets the components alone; the 16-bit copies stay those of the old colour.
    void SetColourFromString(VString const& text);

    std::int32_t red;
    std::int32_t green;
    std::int32_t blue;
    std::int32_t alpha;
    std::uint16_t red16;
    std::uint16_t green16;
    std::uint16_t blue16;

  private:
    static constexpr int Byte(unsigned long packed, unsigned shift) noexcept {
        return narrow_cast<int>((packed >> shift) & 0xFFU);
    }
};

} // namespace VFoundation
