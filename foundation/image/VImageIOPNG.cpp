#include "foundation/image/VImageIOPNG.h"

#include "foundation/host/VFile.h"
#include "foundation/image/internal/PngDecoder.h"

namespace VFoundation {

VImage* VImageIOPNG::LoadResolvedFile(VString const& path, bool exists) const {
    VFile file;
    return ImageFromBitmap(exists && file.OpenForReading(path) ? DecodePng(file) : nullptr,
                           "Failed to load image with PNG Data provider", path);
}

} // namespace VFoundation
