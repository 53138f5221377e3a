#pragma once

#include "foundation/core/Export.h"
#include "foundation/image/ImageFileCodec.h"

#include <cstdint>

namespace VFoundation {

/// Reads JPEG files: baseline and progressive, Huffman and arithmetic coding, grey, colour and CMYK. Colour
/// profiles and the camera's orientation are not applied.
///
/// A file that ends before its picture is complete is refused, as are pictures beyond the limits below or
/// `VImage::PixelBudget()`; other damage that the decoder can bridge is bridged.
///
/// Ownership, threads, memory: as `IImageIO`.
class VFOUNDATION_API VImageIOJPEG : public ImageFileCodec {
  public:
    /// The longest side, in pixels.
    static constexpr std::uint32_t kMaxSide = 16384;
    /// The largest picture, in pixels (64 Mpx).
    static constexpr std::uint64_t kMaxPixels = 64ULL << 20;
    /// The scans that a file may make over its picture; encoders make up to eighteen.
    static constexpr int kMaxScans = 64;
    /// Scans times pixels, which bounds the work; the largest picture may have 32 scans.
    static constexpr std::uint64_t kMaxScanPixels = 32 * kMaxPixels;
    /// The pixels that a byte of the file may stand for: a bit for each block of 64, the least that Huffman coding
    /// can do. Small pictures may have more, so that arithmetic coding fits as well.
    static constexpr std::uint64_t kMaxPixelsPerByte = 512;
    static constexpr std::uint64_t kMaxUnbackedPixels = 1ULL << 20;

  protected:
    VImage* LoadResolvedFile(VString const& path, bool exists) const override;
};

} // namespace VFoundation
