#pragma once

#include <bit>
#include <cstdint>
#include <type_traits>

namespace VFoundation {

/// The basic types that chunked files store: how many bytes each takes in a file, and when it may be read.

template <class T, class... Ts>
inline constexpr bool kIsOneOf = (std::is_same_v<T, Ts> || ...);

/// A type that has a stream operator.
template <class T>
concept FileType = kIsOneOf<T, bool, char, unsigned char, short, unsigned short, int, unsigned int, long,
                            unsigned long, long long, unsigned long long, float, double>;

/// Bytes in the file: the size of the type, but 4 for `long` and `unsigned long`.
template <FileType T>
inline constexpr unsigned long kFileSize = kIsOneOf<T, long, unsigned long> ? 4 : sizeof(T);

/// The unsigned integer of that size, which holds the value's bits.
template <FileType T>
using FileBits = std::conditional_t<
    kFileSize<T> == 1, std::uint8_t,
    std::conditional_t<kFileSize<T> == 2, std::uint16_t,
                       std::conditional_t<kFileSize<T> == 4, std::uint32_t, std::uint64_t>>>;

template <FileType T>
constexpr FileBits<T> FileBitsOf(T value) noexcept {
    if constexpr (std::is_floating_point_v<T>) {
        return std::bit_cast<FileBits<T>>(value);
    } else {
        return static_cast<FileBits<T>>(value); // a `long` keeps its low half
    }
}

template <FileType T>
constexpr T ValueOfFileBits(FileBits<T> bits) noexcept {
    if constexpr (std::is_same_v<T, bool>) {
        return bits != 0;
    } else if constexpr (std::is_floating_point_v<T>) {
        return std::bit_cast<T>(bits);
    } else if constexpr (std::is_signed_v<T>) {
        return static_cast<T>(static_cast<std::make_signed_t<FileBits<T>>>(bits)); // extends the sign
    } else {
        return static_cast<T>(bits);
    }
}

/// Whether a value has the same bytes in memory and in a file, but for their order.
template <FileType T>
inline constexpr bool kIsStoredAsIs = kFileSize<T> == sizeof(T) && !std::is_same_v<T, bool>;

/// What a stream operator does at the end of a chunk in a chunk-safe file.
enum class eReadRule {
    /// 0, with nothing read, when the chunk has fewer bytes left than the value takes.
    eWithinChunk,
    /// The same, and 0 outside any chunk whether the file is chunk-safe or not.
    eOnlyInChunk,
    /// Reads the value however few bytes the chunk has left.
    eAlways
};

template <FileType T>
inline constexpr eReadRule kReadRule = std::is_same_v<T, short>                     ? eReadRule::eOnlyInChunk
                                       : kIsOneOf<T, long long, unsigned long long> ? eReadRule::eAlways
                                                                                    : eReadRule::eWithinChunk;

} // namespace VFoundation
