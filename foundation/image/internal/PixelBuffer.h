#pragma once

#include "foundation/image/VBitmapImage.h"

#include <cstdint>

namespace VFoundation {

/// Pixels while a decoder fills them in; `IntoImage` makes a bitmap of them. Not cleared when allocated.
///
/// Ownership: owns its memory until `IntoImage` hands it on.
/// Threads: one thread at a time.
class PixelBuffer {
  public:
    /// Without memory `Row` must not be called; see `IsValid`.
    PixelBuffer(std::uint32_t width, std::uint32_t height) noexcept;
    PixelBuffer(PixelBuffer const&) = delete;
    PixelBuffer& operator=(PixelBuffer const&) = delete;
    ~PixelBuffer();

    /// False when a side is 0 or there was no memory.
    bool IsValid() const noexcept { return m_pixels != nullptr; }
    std::uint32_t Width() const noexcept { return m_width; }
    std::uint32_t Height() const noexcept { return m_height; }
    std::uint32_t* Row(std::uint32_t y) noexcept { return m_pixels + std::uint64_t{m_width} * y; }

    /// A bitmap (owned) that takes the pixels over and frees them by `release`, which ends in `Free`; null when
    /// there are none. The buffer is empty afterwards.
    VBitmapImage* IntoImage(VBitmapImage::ReleaseCallback release = &Free);

    /// Frees pixels of this class.
    static void Free(void* info, void const* data, unsigned long size) noexcept;

  private:
    std::uint32_t m_width;
    std::uint32_t m_height;
    std::uint32_t* m_pixels;
};

} // namespace VFoundation
