#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <cstdint>
#include <vector>

namespace VFoundation {

/// A rectangle of pixels, shared by reference and never changed once it is made: what a codec decodes a file
/// into and a `VImage` shows.
///
/// Each pixel is one 32-bit word 0xAARRGGBB in the machine's byte order, its colours already multiplied by
/// its alpha. Rows go from the top to the bottom of the picture.
///
///     for (std::uint32_t y = 0; y < bitmap->Height(); ++y) {
///         std::uint32_t const* const row = bitmap->Row(y);     // Width() pixels
///     }
///
/// The pixels are not copied; the callback given to `Create` says when they are no longer needed. The class has no
/// factory, as there is no bitmap without pixels.
///
/// Ownership: by reference count; the pixels live as long as the bitmap.
/// Threads: any number may read; the callback runs on the thread that releases last.
class VFOUNDATION_API VBitmapImage : public Registered<VBitmapImage, VObject> {
  public:
    static constexpr char const* kClassName = "VBitmapImage";
    static VClass* ms_theClass;
    static constexpr bool kIsAbstract = true;

    static constexpr unsigned long kBytesPerPixel = 4;

    /// Called once, with the `info`, `data` and `size` of `Create`.
    using ReleaseCallback = void (*)(void* info, void const* data, unsigned long size);

    /// A bitmap (owned) over `size` bytes at `data`, which stay valid until `release` is called; null for no
    /// callback. Null, with nothing released, when a side is 0, `data` is null or not aligned to 4,
    /// `bytesPerRow` is no multiple of 4 or less than a row needs, `size` is less than all rows need, or there is no
    /// memory for the object.
    static VBitmapImage* Create(std::uint32_t width, std::uint32_t height, unsigned long bytesPerRow,
                                void* info, void const* data, unsigned long size, ReleaseCallback release);

    /// A bitmap that owns its pixels, the rows of which follow one another. Null when a side is 0 or the pixels are not
    /// as many as the sides say, and without memory.
    [[nodiscard]] static VObjectRef<VBitmapImage> FromPixels(std::uint32_t width, std::uint32_t height,
                                                             std::vector<std::uint32_t> pixels);

    /// The longest side that `Scaled` takes or makes, and the memory that it may need on top of the pixels, in bytes.
    static constexpr std::uint32_t kMaxScaledSide = 0xFFFF;
    static constexpr std::uint64_t kMaxScalingMemory = 256ULL << 20;

    /// The picture in another size, by a cubic filter: Mitchell's where it gets smaller, Catmull and Rom's where it gets
    /// larger. The cost is some 10 ns for each pixel that goes in or comes out. Null when a side is 0 or beyond
    /// `kMaxScaledSide`, and without memory. A picture that is made very wide and at the same time hundreds of times
    /// lower may need more than `kMaxScalingMemory`, which is null too: scale it in two steps.
    [[nodiscard]] VObjectRef<VBitmapImage> Scaled(std::uint32_t width, std::uint32_t height) const;

    /// The same in the largest size that keeps the proportions, goes into a square of this side and is no larger than the
    /// picture is: for thumbnails. No side is less than a pixel.
    [[nodiscard]] VObjectRef<VBitmapImage> ScaledToFit(std::uint32_t side) const;

    /// The picture turned and mirrored as a file's Exif orientation asks for (`VImageReader::Orientation`): this bitmap
    /// itself for 1 and for a number that is no orientation, else another one. Null without memory.
    [[nodiscard]] VObjectRef<VBitmapImage> Upright(int orientation);

    VBitmapImage(VBitmapImage const&) = delete;
    VBitmapImage& operator=(VBitmapImage const&) = delete;
    ~VBitmapImage() override;

    std::uint32_t Width() const noexcept { return m_width; }
    std::uint32_t Height() const noexcept { return m_height; }
    unsigned long BytesPerRow() const noexcept { return m_bytesPerRow; }

    /// The pixels of row `y`, which is below `Height()` (borrowed).
    std::uint32_t const* Row(std::uint32_t y) const noexcept {
        return reinterpret_cast<std::uint32_t const*>(m_data + m_bytesPerRow * y);
    }

  private:
    VBitmapImage() : Registered(nullptr) {}

    std::uint32_t m_width = 0;
    std::uint32_t m_height = 0;
    unsigned long m_bytesPerRow = 0;
    unsigned char const* m_data = nullptr;
    unsigned long m_size = 0;
    void* m_info = nullptr;
    ReleaseCallback m_release = nullptr;
};

/// What images hold.
using CGImage = VBitmapImage;

} // namespace VFoundation
