#include "foundation/image/internal/PixelBuffer.h"

#include "foundation/image/internal/PixelMemory.h"

#include <utility>

namespace VFoundation {

namespace {

unsigned long BytesOf(std::uint32_t width, std::uint32_t height) noexcept {
    unsigned long bytes = 0;
    bool const overflows =
        __builtin_mul_overflow(std::uint64_t{width} * height, VBitmapImage::kBytesPerPixel, &bytes);
    return overflows ? 0 : bytes;
}

} // namespace

PixelBuffer::PixelBuffer(std::uint32_t width, std::uint32_t height) noexcept
    : m_width(width), m_height(height),
      m_pixels(static_cast<std::uint32_t*>(AllocatePixelMemory(BytesOf(width, height)))) {
}

PixelBuffer::~PixelBuffer() {
    FreePixelMemory(m_pixels);
}

VBitmapImage* PixelBuffer::IntoImage(VBitmapImage::ReleaseCallback release) {
    VBitmapImage* const image =
        VBitmapImage::Create(m_width, m_height, VBitmapImage::kBytesPerPixel * m_width, nullptr, m_pixels,
                             BytesOf(m_width, m_height), release);
    if (image) {
        m_pixels = nullptr;
    }
    return image;
}

void PixelBuffer::Free(void* /*info*/, void const* data, unsigned long /*size*/) noexcept {
    FreePixelMemory(const_cast<void*>(data));
}

} // namespace VFoundation
