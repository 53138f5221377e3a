#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace VFoundation {

/// Arithmetic on pixels 0xAARRGGBB, four at a time. Two 8-bit channels share a 32-bit word, each with 16 bits
/// of room, so that one multiplication serves both.
namespace PixelMath {

using Pixel = std::uint32_t;
using Pixel4 = std::uint32_t __attribute__((vector_size(16)));
using Channel8 = std::uint16_t __attribute__((vector_size(16)));

constexpr Pixel kEvenChannels = 0x00FF00FF; // red and blue in place, alpha and green shifted down by 8
constexpr Pixel kGreen = 0x0000FF00;
constexpr Pixel kAlpha = 0xFF000000;

inline Pixel MultiplyChannels(Pixel channels, Pixel alpha) noexcept {
    return channels * alpha;
}
inline Pixel4 MultiplyChannels(Pixel4 channels, Pixel4 alpha) noexcept {
    Pixel4 const alphaTwice = alpha | alpha << 16;
    return reinterpret_cast<Pixel4>(reinterpret_cast<Channel8>(channels) *
                                    reinterpret_cast<Channel8>(alphaTwice));
}

/// Colour * alpha / 256, rounded down.
struct ByShift {
    template <class P>
    static P Scale(P channels, P alpha) noexcept {
        return MultiplyChannels(channels, alpha);
    }
};

/// Colour * alpha / 255, rounded to nearest.
struct Rounded {
    template <class P>
    static P Scale(P channels, P alpha) noexcept {
        P const product = MultiplyChannels(channels, alpha) + 0x00800080U;
        return product + (product >> 8 & kEvenChannels);
    }
};

/// `Scale` leaves each channel's result in the upper 8 of its 16 bits.
template <class Way, class P>
P Premultiplied(P pixel) noexcept {
    P const alpha = pixel >> 24;
    P const redBlue = Way::Scale(pixel & kEvenChannels, alpha);
    P const green = Way::Scale(pixel >> 8 & 0xFFU, alpha);
    return (redBlue >> 8 & kEvenChannels) | (green & kGreen) | (pixel & kAlpha);
}

/// Multiplies the colours of `count` pixels by their alpha. `from` needs no alignment and may be `to`.
template <class Way>
void Premultiply(void const* from, Pixel* to, std::size_t count) noexcept {
    auto const* const source = static_cast<unsigned char const*>(from);
    constexpr std::size_t kStep = sizeof(Pixel4) / sizeof(Pixel);
    std::size_t i = 0;
    for (; i + kStep <= count; i += kStep) {
        Pixel4 pixels;
        std::memcpy(&pixels, source + i * sizeof(Pixel), sizeof pixels);
        pixels = Premultiplied<Way>(pixels);
        std::memcpy(to + i, &pixels, sizeof pixels);
    }
    for (; i < count; ++i) {
        Pixel pixel = 0;
        std::memcpy(&pixel, source + i * sizeof(Pixel), sizeof pixel);
        to[i] = Premultiplied<Way>(pixel);
    }
}

} // namespace PixelMath

} // namespace VFoundation
