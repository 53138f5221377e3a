#include "foundation/image/internal/ScaledPixels.h"

#include "foundation/image/VBitmapImage.h"
#include "foundation/image/internal/PixelBuffer.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-function"
// The checks of stb would end a debug build for a rounding error that it allows for elsewhere.
#define STBIR_ASSERT(condition) static_cast<void>(condition)
#define STB_IMAGE_RESIZE_STATIC
#define STB_IMAGE_RESIZE_IMPLEMENTATION
#include <stb/stb_image_resize.h>
#pragma GCC diagnostic pop

namespace VFoundation {

namespace {

constexpr int kChannels = 4;
constexpr int kAlphaChannel = std::endian::native == std::endian::little ? 3 : 0;

/// The rows that stb keeps, in bytes. It computes the size of its memory with 32 bits.
std::uint64_t WorkingMemory(VBitmapImage const& bitmap, PixelBuffer const& pixels) noexcept {
    std::uint64_t const rowsPerRow = bitmap.Height() / pixels.Height() + 1;
    return (4 * rowsPerRow + 2) * pixels.Width() * kChannels * sizeof(float);
}

/// The filter may overshoot at edges: no colour is brighter than its alpha.
void CutToAlpha(PixelBuffer& pixels) noexcept {
    for (std::uint32_t y = 0; y < pixels.Height(); ++y) {
        std::uint32_t* const row = pixels.Row(y);
        for (std::uint32_t x = 0; x < pixels.Width(); ++x) {
            std::uint32_t const alpha = row[x] >> 24;
            row[x] = alpha << 24 | std::min(row[x] >> 16 & 0xFF, alpha) << 16 |
                     std::min(row[x] >> 8 & 0xFF, alpha) << 8 | std::min(row[x] & 0xFF, alpha);
        }
    }
}

} // namespace

bool ScalePixels(VBitmapImage const& bitmap, PixelBuffer& pixels) noexcept {
    if (WorkingMemory(bitmap, pixels) > VBitmapImage::kMaxScalingMemory) {
        return false;
    }
    auto const side = [](std::uint32_t pixelCount) { return static_cast<int>(pixelCount); };
    bool const isScaled =
        stbir_resize_uint8_generic(
            reinterpret_cast<unsigned char const*>(bitmap.Row(0)), side(bitmap.Width()),
            side(bitmap.Height()), static_cast<int>(bitmap.BytesPerRow()),
            reinterpret_cast<unsigned char*>(pixels.Row(0)), side(pixels.Width()), side(pixels.Height()), 0,
            kChannels, kAlphaChannel, STBIR_FLAG_ALPHA_PREMULTIPLIED, STBIR_EDGE_CLAMP, STBIR_FILTER_DEFAULT,
            STBIR_COLORSPACE_LINEAR, nullptr) != 0;
    if (isScaled) {
        CutToAlpha(pixels);
    }
    return isScaled;
}

} // namespace VFoundation
