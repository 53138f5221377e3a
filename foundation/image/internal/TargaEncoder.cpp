#include "foundation/image/internal/TargaEncoder.h"

#include "foundation/core/NarrowCast.h"
#include "foundation/image/internal/TargaFormat.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <utility>

namespace VFoundation {

namespace {

using namespace TargaFormat;

/// The word of a pixel, lowest byte first, is blue, green, red, alpha: the order in the file.
constexpr bool kRowsAreAsInTheFile = std::endian::native == std::endian::little;

bool Write(void const* bytes, std::size_t count, std::FILE* file) {
    return std::fwrite(bytes, 1, count, file) == count;
}

bool WriteHeader(VBitmapImage const& bitmap, std::FILE* file) {
    std::array<unsigned char, kHeaderSize> header{};
    auto const put = [&header](std::size_t offset, std::uint32_t number) {
        header[offset] = narrow_cast<unsigned char>(number & 0xFF);
        header[offset + 1] = narrow_cast<unsigned char>(number >> 8);
    };
    header[kImageType] = kTrueColour;
    put(kWidth, bitmap.Width());
    put(kHeight, bitmap.Height());
    header[kPixelDepth] = 8 * VBitmapImage::kBytesPerPixel;
    header[kDescriptor] = kEightAlphaBits;
    return Write(header.data(), header.size(), file);
}

/// No extension area, no developer directory, and the signature.
bool WriteFooter(std::FILE* file) {
    std::array<unsigned char, kFooterSize> footer{};
    std::memcpy(&footer[kFooterSize - kSignatureSize], kSignature, kSignatureSize);
    return Write(footer.data(), footer.size(), file);
}

/// Collects rows, so that a block is written at a time.
class RowWriter {
  public:
    explicit RowWriter(std::FILE* file) : m_file(file) {}

    bool Add(std::uint32_t const* row, std::size_t width) {
        for (std::size_t x = 0, count = 0; x < width; x += count) {
            count = std::min(m_block.size() - m_used, width - x);
            std::transform(row + x, row + x + count, m_block.begin() + m_used, [](std::uint32_t pixel) {
                return kRowsAreAsInTheFile ? pixel : __builtin_bswap32(pixel);
            });
            m_used += count;
            if (m_used == m_block.size() && !Flush()) {
                return false;
            }
        }
        return true;
    }
    bool Flush() { return Write(m_block.data(), std::exchange(m_used, 0) * sizeof m_block[0], m_file); }

  private:
    std::FILE* m_file;
    std::size_t m_used = 0;
    std::array<std::uint32_t, 32UL * 1024> m_block;
};

bool WritePixels(VBitmapImage const& bitmap, bool flip, std::FILE* file) {
    std::size_t const rowSize = VBitmapImage::kBytesPerPixel * bitmap.Width();
    if (kRowsAreAsInTheFile && !flip && bitmap.BytesPerRow() == rowSize) {
        return Write(bitmap.Row(0), rowSize * bitmap.Height(), file);
    }
    RowWriter rows(file);
    for (std::uint32_t y = 0; y < bitmap.Height(); ++y) {
        if (!rows.Add(bitmap.Row(flip ? bitmap.Height() - 1 - y : y), bitmap.Width())) {
            return false;
        }
    }
    return rows.Flush();
}

} // namespace

bool EncodeTarga(VBitmapImage const& bitmap, bool flip, std::FILE* file) {
    return WriteHeader(bitmap, file) && WritePixels(bitmap, flip, file) && WriteFooter(file);
}

} // namespace VFoundation
