#pragma once

#include "foundation/core/Export.h"
#include "foundation/image/ImageFileCodec.h"

#include <cstdint>

namespace VFoundation {

/// Reads PNG files of every colour type and depth, interlaced or not. 16-bit channels are rounded to 8 bits;
/// colours are multiplied by alpha and rounded. The values are the file's, without regard to gamma and colour
/// profiles; texts and other extras are skipped unread.
///
/// A damaged or incomplete file is refused, as are pictures beyond the limits below or `VImage::PixelBudget()`. Of a
/// damaged chunk that is not needed to decode the pixels, transparency of palettes and single colours included, nothing
/// is used. Of an animation the first picture is read.
///
/// Ownership, threads, memory: as `IImageIO`.
class VFOUNDATION_API VImageIOPNG : public ImageFileCodec {
  public:
    /// The longest side, in pixels.
    static constexpr std::uint32_t kMaxSide = 16384;
    /// The largest picture, in pixels (64 Mpx).
    static constexpr std::uint64_t kMaxPixels = 64ULL << 20;
    /// The memory that one chunk other than pixels may take, in bytes, and how many such chunks may be kept.
    static constexpr unsigned long kMaxChunkSize = 1UL << 20;
    static constexpr unsigned kMaxChunks = 128;

  protected:
    VImage* LoadResolvedFile(VString const& path, bool exists) const override;
};

} // namespace VFoundation
