#pragma once

#include "foundation/image/ImageFileCodec.h"

#include <cstdint>

namespace VFoundation {

/// Reads JPEG files: baseline and progressive, grey, colour and CMYK. The pixels are the file's, without regard
/// to colour profiles and to the orientation that a camera noted down.
///
/// A file that ends before its picture is complete is refused, as are pictures beyond the limits below; other
/// damage that the decoder can bridge is bridged.
///
/// Ownership, threads: as `IImageIO`.
class VImageIOJPEG : public ImageFileCodec {
  public:
    /// The longest side, in pixels.
    static constexpr std::uint32_t kMaxSide = 16384;
    /// The largest picture, in pixels (64 Mpx).
    static constexpr std::uint64_t kMaxPixels = 64ULL << 20;
    /// The passes that a progressive file may make over its picture; encoders make about ten.
    static constexpr int kMaxScans = 64;

  protected:
    VImage* LoadResolvedFile(VString const& path, bool exists) const override;
};

} // namespace VFoundation
