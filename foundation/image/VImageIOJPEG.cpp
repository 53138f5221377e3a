#include "foundation/image/VImageIOJPEG.h"

#include "foundation/host/VFile.h"
#include "foundation/image/internal/ByteSource.h"
#include "foundation/image/internal/DecodeReport.h"
#include "foundation/image/internal/JpegDecoder.h"
#include "foundation/strings/VString.h"

namespace VFoundation {

VImage* VImageIOJPEG::LoadResolvedFile(VString const& path, bool exists) const {
    VFile file;
    DecodeReport report;
    VBitmapImage* bitmap = nullptr;
    if (exists && file.OpenForReading(path)) {
        FileByteSource source(file);
        bitmap = DecodeJpeg(source, report);
    } else {
        report.Fail("%s", exists ? file.OpenErrorText().c_str() : "there is no such file");
    }
    return ImageFromBitmap(bitmap, "Failed to load image with JPG Data provider", report.reason, path);
}

} // namespace VFoundation
