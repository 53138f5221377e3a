#include "foundation/image/VBitmapImage.h"

#include "foundation/image/internal/PixelBuffer.h"
#include "foundation/image/internal/ScaledPixels.h"
#include "foundation/image/internal/WithinMemory.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace VFoundation {

namespace {

constexpr unsigned long kMaxScaledRow = std::numeric_limits<int>::max();

} // namespace

VClass* VBitmapImage::ms_theClass = nullptr;

VBitmapImage* VBitmapImage::Create(std::uint32_t width, std::uint32_t height, unsigned long bytesPerRow,
                                   void* info, void const* data, unsigned long size,
                                   ReleaseCallback release) {
    static_assert(sizeof(unsigned long) == 8, "sizes of rows and bitmaps would not fit");
    bool const isAligned = reinterpret_cast<unsigned long>(data) % alignof(std::uint32_t) == 0;
    if (width == 0 || height == 0 || !data || !isAligned || bytesPerRow % kBytesPerPixel != 0 ||
        bytesPerRow < kBytesPerPixel * width || bytesPerRow > size / height) {
        return nullptr;
    }
    VBitmapImage* bitmap = nullptr;
    if (!DoWithinMemory([&bitmap] { bitmap = new VBitmapImage; })) {
        return nullptr;
    }
    bitmap->m_width = width;
    bitmap->m_height = height;
    bitmap->m_bytesPerRow = bytesPerRow;
    bitmap->m_data = static_cast<unsigned char const*>(data);
    bitmap->m_size = size;
    bitmap->m_info = info;
    bitmap->m_release = release;
    return bitmap;
}

VObjectRef<VBitmapImage> VBitmapImage::FromPixels(std::uint32_t width, std::uint32_t height,
                                                  std::vector<std::uint32_t> pixels) {
    using Pixels = std::vector<std::uint32_t>;
    VObjectRef<VBitmapImage> bitmap;
    if (pixels.size() == std::uint64_t{width} * height) {
        DoWithinMemory([&] {
            auto owned = std::make_unique<Pixels>(std::move(pixels));
            bitmap = VObjectRef<VBitmapImage>::Adopt(
                Create(width, height, kBytesPerPixel * width, owned.get(), owned->data(),
                       kBytesPerPixel * owned->size(),
                       [](void* info, void const*, unsigned long) { delete static_cast<Pixels*>(info); }));
            if (bitmap) {
                static_cast<void>(owned.release()); // the bitmap's
            }
        });
    }
    return bitmap;
}

VObjectRef<VBitmapImage> VBitmapImage::Scaled(std::uint32_t width, std::uint32_t height) const {
    VObjectRef<VBitmapImage> scaled;
    if (std::max({width, height, m_width, m_height}) <= kMaxScaledSide && m_bytesPerRow <= kMaxScaledRow) {
        PixelBuffer pixels(width, height);
        if (pixels.IsValid() && ScalePixels(*this, pixels)) {
            scaled = VObjectRef<VBitmapImage>::Adopt(pixels.IntoImage());
        }
    }
    return scaled;
}

VObjectRef<VBitmapImage> VBitmapImage::ScaledToFit(std::uint32_t side) const {
    std::uint64_t const longest = std::max(m_width, m_height);
    std::uint64_t const fitted = std::min<std::uint64_t>(side, longest);
    auto const scaled = [&](std::uint64_t length) { // rounded
        return static_cast<std::uint32_t>(
            std::max<std::uint64_t>((length * fitted + longest / 2) / longest, fitted > 0 ? 1 : 0));
    };
    return Scaled(scaled(m_width), scaled(m_height));
}

VObjectRef<VBitmapImage> VBitmapImage::Upright(int orientation) {
    if (orientation < 2 || orientation > 8) {
        return VObjectRef<VBitmapImage>::Retaining(this);
    }
    bool const isTransposed = orientation >= 5;
    bool const isFromRight = orientation == 2 || orientation == 3 || orientation >= 7;
    bool const isFromBottom = orientation == 3 || orientation == 4 || orientation == 6 || orientation == 7;
    PixelBuffer pixels(isTransposed ? m_height : m_width, isTransposed ? m_width : m_height);
    if (!pixels.IsValid()) {
        return {};
    }
    for (std::uint32_t y = 0; y < pixels.Height(); ++y) {
        std::uint32_t* const row = pixels.Row(y);
        for (std::uint32_t x = 0; x < pixels.Width(); ++x) {
            std::uint32_t const fromX = isTransposed ? y : x;
            std::uint32_t const fromY = isTransposed ? x : y;
            row[x] =
                Row(isFromBottom ? m_height - 1 - fromY : fromY)[isFromRight ? m_width - 1 - fromX : fromX];
        }
    }
    return VObjectRef<VBitmapImage>::Adopt(pixels.IntoImage());
}

VBitmapImage::~VBitmapImage() {
    if (m_release) {
        m_release(m_info, m_data, m_size);
    }
}

} // namespace VFoundation
