#include "foundation/image/internal/ExifOrientation.h"

#include <cstdint>

namespace VFoundation {

namespace {

constexpr std::size_t kHeaderSize = 8;
constexpr std::size_t kEntrySize = 12;
constexpr std::size_t kValueOffset = 8; // in an entry
constexpr std::uint32_t kMagic = 42;
constexpr std::uint32_t kOrientation = 0x0112;
constexpr std::uint32_t kShort = 3;

/// Numbers in the byte order that the header names; 0 beyond the end.
class Tiff {
  public:
    Tiff(unsigned char const* bytes, std::size_t count, bool isBigEndian) noexcept
        : m_bytes(bytes), m_count(count), m_isBigEndian(isBigEndian) {}

    std::uint32_t Number(std::size_t offset, unsigned size) const noexcept {
        std::uint32_t number = 0;
        if (offset > m_count || m_count - offset < size) {
            return 0;
        }
        for (unsigned i = 0; i < size; ++i) {
            number = number << 8 | m_bytes[offset + (m_isBigEndian ? i : size - 1 - i)];
        }
        return number;
    }

  private:
    unsigned char const* m_bytes;
    std::size_t m_count;
    bool m_isBigEndian;
};

} // namespace

int ExifOrientation(unsigned char const* bytes, std::size_t count) noexcept {
    if (count < kHeaderSize || bytes[0] != bytes[1] || (bytes[0] != 'M' && bytes[0] != 'I')) {
        return 0;
    }
    Tiff const tiff(bytes, count, bytes[0] == 'M');
    if (tiff.Number(2, 2) != kMagic) {
        return 0;
    }
    std::size_t const directory = tiff.Number(4, 4);
    std::size_t const entries = tiff.Number(directory, 2);
    for (std::size_t i = 0; i < entries; ++i) {
        std::size_t const entry = directory + 2 + i * kEntrySize;
        if (tiff.Number(entry, 2) == kOrientation) {
            std::uint32_t const value = tiff.Number(entry + kValueOffset, 2);
            return tiff.Number(entry + 2, 2) == kShort && value >= 1 && value <= 8 ? static_cast<int>(value)
                                                                                   : 0;
        }
    }
    return 0;
}

} // namespace VFoundation
