#include "foundation/image/VImageReader.h"

#include "foundation/image/internal/ByteSource.h"
#include "foundation/image/internal/DecodeReport.h"
#include "foundation/image/internal/JpegDecoder.h"
#include "foundation/image/internal/PngDecoder.h"
#include "foundation/image/internal/TargaDecoder.h"
#include "foundation/image/internal/WithinMemory.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"

#include <algorithm>
#include <iterator>

namespace VFoundation {

namespace {

constexpr unsigned char kJpegStart[] = {0xFF, 0xD8}; // libjpeg looks for the next marker itself
constexpr unsigned char kPngStart[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

} // namespace

bool VImageReader::HasPictureExtension(std::string const& path) {
    static constexpr char const* kExtensions[] = {"jpg", "jpeg", "png", "tga"};
    return std::any_of(std::begin(kExtensions), std::end(kExtensions), [&path](char const* extension) {
        return VString::CStringHasPathExtension(path.c_str(), extension, true);
    });
}

/// A Targa file is known by its end: what is neither of the others counts as one.
void VImageReader::Recognise(unsigned char const* start, std::size_t count) {
    auto const is = [start, count](auto const& expected) {
        return count >= std::size(expected) && std::equal(std::begin(expected), std::end(expected), start);
    };
    m_format = is(kJpegStart) ? Format::kJpeg : is(kPngStart) ? Format::kPng : Format::kTarga;
}

/// Of a JPEG or PNG file.
VObjectRef<VImage> VImageReader::Decode(ByteSource& source, DecodeReport& report) const {
    VObjectRef<VImage> image;
    auto bitmap = VObjectRef<VBitmapImage>::Adopt(m_format == Format::kJpeg ? DecodeJpeg(source, report)
                                                                            : DecodePng(source, report));
    if (bitmap) {
        image = VObjectRef<VImage>::Adopt(VImage::New());
        image->SetImageRef(bitmap.Detach());
        image->SetHasAlpha(report.hasAlpha);
    }
    return image;
}

/// `work` makes the image, or is null with the reason in its report.
template <class Work>
VObjectRef<VImage> VImageReader::Read(std::string const& name, Work work) {
    m_format = Format::kNone;
    m_orientation = 1;
    m_error.clear();
    DecodeReport report;
    VObjectRef<VImage> image;
    if (!DoWithinMemory([&] { image = work(report); })) {
        image = VObjectRef<VImage>();
        report.Fail("there is no memory");
    }
    if (image) {
        m_orientation = report.orientation;
    } else {
        bool const isOther = m_format == Format::kTarga && report.footerIsMissing;
        m_format = isOther ? Format::kNone : m_format;
        char const* const reason = isOther ? "neither a JPEG nor a PNG nor a Targa picture" : report.reason;
        DoWithinMemory([&] { m_error = "cannot read " + name + ": " + reason; });
    }
    return image;
}

VObjectRef<VImage> VImageReader::ReadFile(std::string const& path) {
    return Read(path, [this, &path](DecodeReport& report) {
        VObjectRef<VImage> image;
        VFile file;
        if (!file.OpenForReading(path.c_str())) {
            report.Fail("%s", file.OpenErrorText().c_str());
            return image;
        }
        unsigned char start[std::size(kPngStart)];
        Recognise(start, file.ReadBytes(start, sizeof start));
        file.FileSeek(0, VFile::kFromStart);
        if (m_format == Format::kTarga) {
            image = VObjectRef<VImage>::Adopt(VImage::New());
            TargaFileSource source(file);
            image = DecodeTarga(source, *image, report) ? image : VObjectRef<VImage>();
        } else {
            FileByteSource source(file);
            image = Decode(source, report);
        }
        if (image) {
            image->SetName(path.c_str());
        }
        return image;
    });
}

VObjectRef<VImage> VImageReader::ReadBytes(void const* bytes, std::size_t count) {
    return Read("a picture in memory", [this, bytes, count](DecodeReport& report) {
        Recognise(static_cast<unsigned char const*>(bytes), bytes ? count : 0);
        if (m_format == Format::kTarga) {
            auto image = VObjectRef<VImage>::Adopt(VImage::New());
            TargaMemorySource source(bytes, bytes ? count : 0);
            return DecodeTarga(source, *image, report) ? image : VObjectRef<VImage>();
        }
        MemoryByteSource source(bytes, count);
        return Decode(source, report);
    });
}

VObjectRef<VImage> VImageReader::ReadData(VData const& data) {
    return ReadBytes(data.Bytes(), data.Length());
}

VString VImageReader::ErrorDescription() const {
    return VString(m_error.c_str());
}

} // namespace VFoundation
