#include "foundation/image/VBitmapContext.h"

#include "foundation/image/internal/PixelBuffer.h"
#include "foundation/image/internal/WithinMemory.h"

#include <bit>
#include <cstring>

namespace VFoundation {

VBitmapContext::VBitmapContext(std::unique_ptr<PixelBuffer> pixels) noexcept : m_pixels(std::move(pixels)) {
}

VBitmapContext::~VBitmapContext() = default;

std::unique_ptr<VBitmapContext> VBitmapContext::Create(std::uint32_t width, std::uint32_t height) {
    std::unique_ptr<VBitmapContext> context;
    DoWithinMemory([&context, width, height] {
        auto pixels = std::make_unique<PixelBuffer>(width, height);
        if (pixels->IsValid()) {
            context.reset(new VBitmapContext(std::move(pixels)));
        }
    });
    for (std::uint32_t y = 0; context && y < height; ++y) {
        std::memset(context->m_pixels->Row(y), 0, VBitmapImage::kBytesPerPixel * width);
    }
    return context;
}

bool VBitmapContext::DrawImage(CGImage const& image) {
    if (image.Width() != Width() || image.Height() != Height()) {
        return false;
    }
    for (std::uint32_t y = 0; y < Height(); ++y) {
        std::uint32_t const* const from = image.Row(m_flipped ? Height() - 1 - y : y);
        std::uint32_t* const to = m_pixels->Row(y);
        for (std::uint32_t x = 0; x < Width(); ++x) {
            to[x] = std::endian::native == std::endian::big ? from[x] : __builtin_bswap32(from[x]);
        }
    }
    return true;
}

std::uint32_t VBitmapContext::Width() const noexcept {
    return m_pixels->Width();
}

std::uint32_t VBitmapContext::Height() const noexcept {
    return m_pixels->Height();
}

unsigned char const* VBitmapContext::Row(std::uint32_t y) const noexcept {
    return reinterpret_cast<unsigned char const*>(m_pixels->Row(y));
}

} // namespace VFoundation
