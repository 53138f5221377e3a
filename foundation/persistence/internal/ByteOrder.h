#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace VFoundation {

constexpr std::uint8_t SwappedBytes(std::uint8_t bits) noexcept {
    return bits;
}
constexpr std::uint16_t SwappedBytes(std::uint16_t bits) noexcept {
    return __builtin_bswap16(bits);
}
constexpr std::uint32_t SwappedBytes(std::uint32_t bits) noexcept {
    return __builtin_bswap32(bits);
}
constexpr std::uint64_t SwappedBytes(std::uint64_t bits) noexcept {
    return __builtin_bswap64(bits);
}

/// Copies one number of the type `Bits` between places of any alignment, its bytes reversed where `swap` says
/// so.
template <class Bits>
void CopyNumber(void* to, void const* from, bool swap) noexcept {
    Bits bits;
    std::memcpy(&bits, from, sizeof bits);
    if (swap) {
        bits = SwappedBytes(bits);
    }
    std::memcpy(to, &bits, sizeof bits);
}

/// The same for `count` numbers, with their bytes reversed. The places do not overlap.
template <class Bits>
void CopyNumbersSwapped(void* __restrict to, void const* __restrict from, std::size_t count) noexcept {
    for (std::size_t i = 0; i < count; ++i) {
        Bits bits;
        std::memcpy(&bits, static_cast<unsigned char const*>(from) + i * sizeof bits, sizeof bits);
        bits = SwappedBytes(bits);
        std::memcpy(static_cast<unsigned char*>(to) + i * sizeof bits, &bits, sizeof bits);
    }
}

} // namespace VFoundation
