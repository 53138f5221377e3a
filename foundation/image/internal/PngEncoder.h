#pragma once

#include <cstddef>

namespace VFoundation {

struct DecodeReport;
class VBitmapImage;

/// Where an encoder writes to.
class ByteSink {
  public:
    virtual ~ByteSink() = default;
    /// False, with `errno`, when not all bytes could be written. Throws nothing.
    virtual bool Write(void const* bytes, std::size_t count) = 0;
};

/// Writes the bitmap as a PNG file with zlib's `compression`. False when that fails; the report has the reason unless the
/// sink failed. Without memory for a row `std::bad_alloc`.
bool EncodePng(VBitmapImage const& bitmap, int compression, ByteSink& sink, DecodeReport& report);

} // namespace VFoundation
