#pragma once

namespace VFoundation {

class ByteSource;
class VBitmapImage;
struct DecodeReport;

/// The picture in a JPEG file (owned), within the limits that `VImageIOJPEG` sets; null, with the reason in the report,
/// when there is none. Without memory for the decoder `std::bad_alloc`.
VBitmapImage* DecodeJpeg(ByteSource& file, DecodeReport& report);

} // namespace VFoundation
