#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace VFoundation {

/// The CRC-32 of IEEE 802.3, as gzip and PNG have it.
class Crc32 {
  public:
    void Add(unsigned char const* bytes, std::size_t size) noexcept {
        for (std::size_t i = 0; i < size; ++i) {
            m_rest = kTable[(m_rest ^ bytes[i]) & 0xFF] ^ (m_rest >> 8);
        }
    }
    /// Of all that was added.
    std::uint32_t Value() const noexcept { return ~m_rest; }

  private:
    static constexpr auto kTable = [] {
        constexpr std::uint32_t kPolynomial = 0xEDB88320; // its lowest power in the highest bit
        std::array<std::uint32_t, 256> table{};
        for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
            std::uint32_t rest = byte;
            for (int bit = 0; bit < 8; ++bit) {
                rest = (rest >> 1) ^ ((rest & 1) != 0 ? kPolynomial : 0);
            }
            table[byte] = rest;
        }
        return table;
    }();

    std::uint32_t m_rest = 0xFFFFFFFF;
};

} // namespace VFoundation
