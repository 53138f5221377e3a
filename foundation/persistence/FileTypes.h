#pragma once

#include <bit>
#include <cstdint>
#include <type_traits>

namespace VFoundation {

/// What the stream operators of chunked files need to know of each basic type: which types there are, how
/// many bytes each takes in a file, and how careful its reading is. Everything else about values in files
/// follows from these few lines.

template <class T, class... Ts>
inline constexpr bool kIsOneOf = (std::is_same_v<T, Ts> || ...);

/// The types that stand in files.
template <class T>
concept FileValue = kIsOneOf<T, bool, char, unsigned char, short, unsigned short, int, unsigned int, long,
                             unsigned long, long long, unsigned long long, float, double>;

/// Bytes in the file: those of the type, but 4 for a `long`.
template <FileValue T>
inline constexpr unsigned long kFileSize = kIsOneOf<T, long, unsigned long> ? 4 : sizeof(T);

/// The unsigned integer of that many bytes, which carries the value's bits.
template <FileValue T>
using FileBits = std::conditional_t<
    kFileSize<T> == 1, std::uint8_t,
    std::conditional_t<kFileSize<T> == 2, std::uint16_t,
                       std::conditional_t<kFileSize<T> == 4, std::uint32_t, std::uint64_t>>>;

template <FileValue T>
constexpr FileBits<T> FileBitsOf(T value) noexcept {
    if constexpr (std::is_floating_point_v<T>) {
        return std::bit_cast<FileBits<T>>(value);
    } else {
        return static_cast<FileBits<T>>(value); // a `long` keeps its low half
    }
}

template <FileValue T>
constexpr T FileValueOf(FileBits<T> bits) noexcept {
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

/// How a stream operator treats the end of a chunk, in a chunk-safe file unless it says otherwise.
enum class eReadRule {
    /// A value that the chunk does not hold is 0 and nothing is read.
    eWithinChunk,
    /// The same, and outside any chunk 0 whether the file is chunk-safe or not.
    eOnlyInChunk,
    /// Reads whatever the chunk holds.
    eAlways
};

template <FileValue T>
inline constexpr eReadRule kReadRule = std::is_same_v<T, short>                     ? eReadRule::eOnlyInChunk
                                       : kIsOneOf<T, long long, unsigned long long> ? eReadRule::eAlways
                                                                                    : eReadRule::eWithinChunk;

} // namespace VFoundation
