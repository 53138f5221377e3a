#pragma once

namespace VFoundation {

class VBitmapImage;
class VFile;

/// The picture in an open JPEG file (owned), within the limits that `VImageIOJPEG` sets; null when there is none.
VBitmapImage* DecodeJpeg(VFile& file);

} // namespace VFoundation
