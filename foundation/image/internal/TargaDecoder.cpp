#include "foundation/image/internal/TargaDecoder.h"

#include "foundation/host/VFile.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/image/internal/DecodeReport.h"
#include "foundation/image/internal/PixelBuffer.h"
#include "foundation/image/internal/PixelMath.h"
#include "foundation/image/internal/TargaFormat.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace VFoundation {

namespace {

using namespace TargaFormat;
using PixelMath::Pixel;

/// What is read at a time, so that a block stays in the processor's cache until its rows are decoded.
constexpr std::size_t kBlockSize = 128UL * 1024;

/// A little-endian number of `Bytes` bytes.
template <unsigned Bytes>
Pixel ReadNumber(unsigned char const* bytes) noexcept {
    Pixel number = 0;
    for (unsigned i = 0; i < Bytes; ++i) {
        number |= Pixel{bytes[i]} << (8 * i);
    }
    return number;
}

constexpr std::int64_t SignedByte(unsigned char byte) noexcept {
    return byte < 0x80 ? std::int64_t{byte} : std::int64_t{byte} - 0x100;
}

using RowDecoder = void (*)(unsigned char const* source, Pixel* row, std::size_t width);

void DecodeGreys(unsigned char const* source, Pixel* row, std::size_t width) {
    for (std::size_t x = 0; x < width; ++x) {
        row[x] = PixelMath::kAlpha | Pixel{source[x]} * 0x010101U;
    }
}

void DecodeColours(unsigned char const* source, Pixel* row, std::size_t width) {
    std::size_t x = 0;
    // Four pixels are three words, so that no read passes the end.
    for (; x + 4 <= width; x += 4, source += 12) {
        Pixel const words[] = {ReadNumber<4>(source), ReadNumber<4>(source + 4), ReadNumber<4>(source + 8)};
        row[x] = PixelMath::kAlpha | words[0];
        row[x + 1] = PixelMath::kAlpha | words[0] >> 24 | words[1] << 8;
        row[x + 2] = PixelMath::kAlpha | words[1] >> 16 | words[2] << 16;
        row[x + 3] = PixelMath::kAlpha | words[2] >> 8;
    }
    for (; x < width; ++x, source += 3) {
        row[x] = PixelMath::kAlpha | ReadNumber<3>(source);
    }
}

void DecodeColoursWithAlpha(unsigned char const* source, Pixel* row, std::size_t width) {
    if constexpr (std::endian::native == std::endian::little) {
        PixelMath::Premultiply<PixelMath::ByShift>(source, row, width);
    } else {
        for (std::size_t x = 0; x < width; ++x) {
            row[x] = ReadNumber<4>(source + 4 * x);
        }
        PixelMath::Premultiply<PixelMath::ByShift>(row, row, width);
    }
}

struct Layout {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::size_t bytesPerPixel = 0;
    std::uint64_t start = 0;
    RowDecoder decodeRow = nullptr;
};

/// False when the file is too short, lacks the signature of the footer, has a depth that is not supported, has more
/// pixels than the budget allows, or fewer bytes than its pixels need.
bool ReadLayout(TargaSource& source, Layout& layout, DecodeReport& report) {
    std::uint64_t const size = source.Size();
    if (size < VImageIOTarga::kMinFileSize ||
        std::memcmp(source.Bytes(size - kSignatureSize, kComparedSignatureSize), kSignature,
                    kComparedSignatureSize) != 0) {
        report.footerIsMissing = true;
        report.Fail("the footer of a Targa file is missing");
        return false;
    }
    unsigned char const* const header = source.Bytes(0, kHeaderSize);
    layout.width = ReadNumber<2>(header + kWidth);
    layout.height = ReadNumber<2>(header + kHeight);
    unsigned const depth = header[kPixelDepth];
    layout.bytesPerPixel = depth / 8;
    layout.decodeRow = depth == 8    ? &DecodeGreys
                       : depth == 24 ? &DecodeColours
                       : depth == 32 ? &DecodeColoursWithAlpha
                                     : nullptr;
    std::int64_t const start =
        SignedByte(header[kIDLength]) + (header[kColourMapType] == 0 ? std::int64_t{kHeaderSize} : 0);
    layout.start = static_cast<std::uint64_t>(start);
    std::uint64_t const pixels = std::uint64_t{layout.width} * layout.height; // 32 bits at most
    if (!layout.decodeRow) {
        report.Fail("a depth of %u bits is not supported", depth);
        return false;
    }
    bool const fits = start >= 0 && pixels <= VImage::PixelBudget() && pixels > 0 &&
                      size >= layout.start + pixels * layout.bytesPerPixel + kFooterSize;
    if (!fits) {
        report.Fail("%u x %u pixels are more than the limits or the length of the file allow", layout.width,
                    layout.height);
    }
    return fits;
}

void DecodePixels(TargaSource& source, Layout const& layout, PixelBuffer& pixels) {
    std::size_t const rowSize = layout.width * layout.bytesPerPixel;
    std::uint64_t const rowsPerBlock = std::max<std::uint64_t>(1, kBlockSize / rowSize);
    for (std::uint64_t y = 0; y < layout.height;) {
        std::uint64_t const end = std::min<std::uint64_t>(layout.height, y + rowsPerBlock);
        unsigned char const* bytes = source.Bytes(layout.start + y * rowSize, (end - y) * rowSize);
        for (; y < end; ++y, bytes += rowSize) {
            std::uint64_t const row = layout.height - 1 - y; // the file begins with the bottom row
            layout.decodeRow(bytes, pixels.Row(static_cast<std::uint32_t>(row)), layout.width);
        }
    }
}

} // namespace

TargaFileSource::TargaFileSource(VFile& file)
    : m_file(file), m_size(static_cast<std::uint64_t>(std::max(file.GetLength(), 0L))) {
}

unsigned char const* TargaFileSource::Bytes(std::uint64_t offset, std::size_t count) {
    if (m_block.Length() < count) {
        m_block.SetLength(count, false);
    }
    if (offset != m_position) {
        m_file.FileSeek(static_cast<long>(offset), VFile::kFromStart);
    }
    std::size_t const read = m_file.ReadBytes(m_block.Bytes(), count);
    std::memset(m_block.Bytes() + read, 0, count - read);
    m_position = offset + read;
    return m_block.Bytes();
}

bool TargaFileSource::HasFailed() const {
    return m_file.ReadError() != 0;
}

bool DecodeTarga(TargaSource& source, VImage& image, DecodeReport& report) {
    Layout layout;
    if (!ReadLayout(source, layout, report)) {
        return false;
    }
    PixelBuffer pixels(layout.width, layout.height);
    if (!pixels.IsValid()) {
        report.Fail("there is no memory for %u x %u pixels", layout.width, layout.height);
        return false;
    }
    DecodePixels(source, layout, pixels);
    VBitmapImage* const bitmap =
        source.HasFailed() ? nullptr : pixels.IntoImage(&VImageIOTarga::ReleaseImageData);
    if (!bitmap) {
        report.Fail("%s",
                    source.HasFailed() ? "the file could not be read" : "there is no memory for the bitmap");
        return false;
    }
    report.hasAlpha = layout.bytesPerPixel == 4;
    image.SetImageRef(bitmap);
    image.SetHasAlpha(report.hasAlpha);
    return true;
}

} // namespace VFoundation
