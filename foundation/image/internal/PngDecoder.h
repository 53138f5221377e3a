#pragma once

namespace VFoundation {

class VBitmapImage;
class VFile;

/// The picture in an open PNG file (owned), within the limits that `VImageIOPNG` sets; null when there is none.
VBitmapImage* DecodePng(VFile& file);

} // namespace VFoundation
