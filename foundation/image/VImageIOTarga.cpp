#include "foundation/image/VImageIOTarga.h"

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/NarrowCast.h"
#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/host/VFile.h"
#include "foundation/image/VBitmapContext.h"
#include "foundation/image/VImage.h"
#include "foundation/image/internal/PixelBuffer.h"
#include "foundation/image/internal/TargaDecoder.h"
#include "foundation/image/internal/TargaFormat.h"
#include "foundation/image/internal/WithinMemory.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VThread.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <vector>

namespace VFoundation {

namespace {

using namespace TargaFormat;

std::array<unsigned char, kHeaderSize> Header(VBitmapContext const& context) {
    std::array<unsigned char, kHeaderSize> header{};
    auto const put = [&header](std::size_t offset, std::uint32_t number) {
        header[offset] = narrow_cast<unsigned char>(number & 0xFF);
        header[offset + 1] = narrow_cast<unsigned char>(number >> 8);
    };
    header[kImageType] = kTrueColour;
    put(kWidth, context.Width());
    put(kHeight, context.Height());
    header[kPixelDepth] = 8 * VBitmapImage::kBytesPerPixel;
    header[kDescriptor] = kEightAlphaBits;
    return header;
}

/// No extension area, no developer directory, and the signature.
std::array<unsigned char, kFooterSize> Footer() {
    std::array<unsigned char, kFooterSize> footer{};
    std::memcpy(&footer[kFooterSize - kSignatureSize], kSignature, kSignatureSize);
    return footer;
}

template <class Bytes>
bool Write(Bytes const& bytes, std::FILE* file) {
    return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
}

/// The bytes of each pixel come as alpha, red, green, blue and go as blue, green, red, alpha. `bytes` has room for
/// one row.
bool WriteRows(VBitmapContext const& context, std::vector<unsigned char>& bytes, std::FILE* file) {
    for (std::uint32_t y = 0; y < context.Height(); ++y) {
        unsigned char const* const source = context.Row(y);
        for (std::size_t i = 0; i < bytes.size(); i += VBitmapImage::kBytesPerPixel) {
            std::uint32_t pixel = 0;
            std::memcpy(&pixel, source + i, sizeof pixel);
            pixel = __builtin_bswap32(pixel);
            std::memcpy(&bytes[i], &pixel, sizeof pixel);
        }
        if (!Write(bytes, file)) {
            return false;
        }
    }
    return true;
}

} // namespace

VImage* VImageIOTarga::LoadResolvedFile(VString const& path, bool exists) const {
    VFile file;
    if (exists && file.OpenForReading(path)) {
        try {
            auto image = VObjectRef<VImage>::Adopt(VImage::New());
            TargaFileSource source(file);
            if (DecodeTarga(source, *image)) {
                return image.Detach();
            }
            if (file.ReadError() == 0) {
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
    TraceFailure(path);
    return nullptr;
}

bool VImageIOTarga::ConvertDataToImage(VData const& data, VImage& image) const {
    TargaMemorySource source(data);
    return DecodeTarga(source, image);
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
        return false;
    }
    auto const context = CreateARGBBitmapContext(bitmap);
    if (!context) {
        return false;
    }
    context->SetFlipped(flip);
    context->DrawImage(*bitmap);
    std::vector<unsigned char> row;
    if (!DoWithinMemory([&] { row.resize(VBitmapImage::kBytesPerPixel * context->Width()); })) {
        return false;
    }
    std::FILE* const file = VFile::vfc_fopen(path, "wb");
    if (!file) {
        return false;
    }
    bool const written =
        Write(Header(*context), file) && WriteRows(*context, row, file) && Write(Footer(), file);
    return std::fclose(file) == 0 && written;
}

std::unique_ptr<VBitmapContext> VImageIOTarga::CreateARGBBitmapContext(CGImage const* image) {
    return image ? VBitmapContext::Create(image->Width(), image->Height()) : nullptr;
}

void VImageIOTarga::ReleaseImageData(void* info, void const* data, unsigned long size) {
    PixelBuffer::Free(info, data, size);
}

} // namespace VFoundation
