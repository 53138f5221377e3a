#pragma once

namespace VFoundation {

class ByteSource;
class VBitmapImage;
struct DecodeReport;

/// The picture in a PNG file (owned), within the limits that `VImageIOPNG` sets; null, with the reason in the report,
/// when there is none.
VBitmapImage* DecodePng(ByteSource& file, DecodeReport& report);

} // namespace VFoundation
