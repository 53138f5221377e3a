#include "foundation/image/VImageIOTarga.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/host/VFile.h"
#include "foundation/image/ImageLoadReason.h"
#include "foundation/image/VBitmapContext.h"
#include "foundation/image/VImage.h"
#include "foundation/image/internal/DecodeReport.h"
#include "foundation/image/internal/PixelBuffer.h"
#include "foundation/image/internal/TargaDecoder.h"
#include "foundation/image/internal/TargaEncoder.h"
#include "foundation/image/internal/WithinMemory.h"
#include "foundation/log/VLog.h"
#include "foundation/persistence/internal/FileReplacer.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VThread.h"

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace VFoundation {

namespace {

/// The result of these is 0, or the system's error number.
int SaveInPlace(CGImage const& bitmap, VString const& path, bool flip) {
    std::FILE* const file = VFile::vfc_fopen(path, "wb");
    if (!file) {
        return errno;
    }
    errno = 0;
    bool const isWritten = EncodeTarga(bitmap, flip, file);
    int const error = isWritten ? 0 : errno;
    bool const isClosed = std::fclose(file) == 0;
    return isWritten && isClosed ? 0 : !isWritten && error != 0 ? error : errno != 0 ? errno : EIO;
}

int SaveReplacing(CGImage const& bitmap, VString const& path, bool flip) {
    FileReplacer replacer(path.CString());
    errno = 0;
    bool const isWritten = replacer.Stream() && EncodeTarga(bitmap, flip, replacer.Stream());
    int const error = errno;
    if (isWritten && replacer.Commit()) {
        return 0;
    }
    return replacer.Error() != 0 ? replacer.Error() : error != 0 ? error : EIO;
}

} // namespace

VImage* VImageIOTarga::LoadResolvedFile(VString const& path, bool exists) const {
    constexpr char const* kFailure = "Failed to load image with Targa decoder";
    VFile file;
    DecodeReport report;
    if (!exists) {
        report.Fail("there is no such file");
    } else if (!file.OpenForReading(path)) {
        report.Fail("%s", file.OpenErrorText().c_str());
    } else {
        try {
            auto image = VObjectRef<VImage>::Adopt(VImage::New());
            TargaFileSource source(file);
            if (DecodeTarga(source, *image, report)) {
                return image.Detach();
            }
            if (file.ReadError() == 0) {
                ImageLoadReason::Note(path.CString(), report.reason);
                TraceReason(kFailure, report.reason);
                return nullptr;
            }
        } catch (VException const&) {
            VLog::Trace("Caught out of memory exception whilst loading image\n");
        } catch (...) {
            if (VThread::CaughtEndOfThread()) {
                throw;
            }
            VLog::Trace("Caught and unknown exception whilst loading image\n");
        }
    }
    ImageLoadReason::Note(path.CString(), report.reason);
    TraceReason(kFailure, report.reason);
    TraceFailure(path);
    return nullptr;
}

bool VImageIOTarga::ConvertDataToImage(VData const& data, VImage& image) const {
    TargaMemorySource source(data.Bytes(), data.Length());
    DecodeReport report;
    bool const isDecoded = DecodeTarga(source, image, report);
    if (!isDecoded) {
        ImageLoadReason::Note("a picture in memory", report.reason);
    }
    return isDecoded;
}

VObjectArray* VImageIOTarga::SupportedFileExtensions() const {
    auto extensions = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    extensions->AddObject(VObjectRef<VString>::Adopt(VString::NewString("tga")).Get());
    return extensions.Detach();
}

bool VImageIOTarga::SaveImageToFile(VImage const& image, VString const& path) const {
    return SaveImageFromPixelData(image, path, m_flip);
}

bool VImageIOTarga::SaveImageFromPixelData(VImage const& image, VString const& path, bool flip) const {
    CGImage const* const bitmap = image.ImageRef();
    if (!bitmap || bitmap->Width() > kMaxSide || bitmap->Height() > kMaxSide) {
        ImageLoadReason::NoteSaving(path.CString(),
                                    bitmap ? "a side is longer than 65535 pixels" : "it has no pixels");
        return false;
    }
    int error = ENOMEM;
    DoWithinMemory([&] {
        error = m_saving == Saving::kReplacing ? SaveReplacing(*bitmap, path, flip)
                                               : SaveInPlace(*bitmap, path, flip);
    });
    if (error != 0) {
        DoWithinMemory([&] {
            ImageLoadReason::NoteSaving(path.CString(), std::system_category().message(error).c_str());
        });
    }
    return error == 0;
}

std::unique_ptr<VBitmapContext> VImageIOTarga::CreateARGBBitmapContext(CGImage const* image) {
    return image ? VBitmapContext::Create(image->Width(), image->Height()) : nullptr;
}

void VImageIOTarga::ReleaseImageData(void* info, void const* data, unsigned long size) {
    PixelBuffer::Free(info, data, size);
}

} // namespace VFoundation
