#pragma once

#include "foundation/core/Export.h"
#include "foundation/image/VBitmapImage.h"

#include <cstdint>
#include <memory>

namespace VFoundation {

class PixelBuffer;

/// Memory to draw bitmaps into, for codecs that want the channels in a fixed order: each pixel is the four bytes
/// alpha, red, green, blue, its colours multiplied by its alpha, in every byte order of the machine. The first row
/// is the top one. It starts transparent.
///
/// Ownership: owns its memory.
/// Threads: one thread at a time.
class VFOUNDATION_API VBitmapContext {
  public:
    /// Null when a side is 0 or there is no memory.
    static std::unique_ptr<VBitmapContext> Create(std::uint32_t width, std::uint32_t height);

    VBitmapContext(VBitmapContext const&) = delete;
    VBitmapContext& operator=(VBitmapContext const&) = delete;
    ~VBitmapContext();

    /// Draws images upside down from now on.
    void SetFlipped(bool flipped) noexcept { m_flipped = flipped; }
    /// Fills the context with the image. False, with nothing drawn, when their sizes differ.
    bool DrawImage(CGImage const& image);

    std::uint32_t Width() const noexcept;
    std::uint32_t Height() const noexcept;
    /// The bytes of row `y`, which is below `Height()` (borrowed): four for each pixel.
    unsigned char const* Row(std::uint32_t y) const noexcept;

  private:
    explicit VBitmapContext(std::unique_ptr<PixelBuffer> pixels) noexcept;

    std::unique_ptr<PixelBuffer> m_pixels; // big-endian words, in other words the four bytes in their order
    bool m_flipped = false;
};

} // namespace VFoundation
