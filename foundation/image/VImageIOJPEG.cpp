#include "foundation/image/VImageIOJPEG.h"

#include "foundation/host/VFile.h"
#include "foundation/image/internal/JpegDecoder.h"

namespace VFoundation {

VImage* VImageIOJPEG::LoadResolvedFile(VString const& path, bool exists) const {
    VFile file;
    return ImageFromBitmap(exists && file.OpenForReading(path) ? DecodeJpeg(file) : nullptr,
                           "Failed to load image with JPG Data provider", path);
}

} // namespace VFoundation
