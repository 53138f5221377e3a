#pragma once

#include "foundation/core/Export.h"
#include "foundation/image/ImageFileCodec.h"
#include "foundation/image/VBitmapImage.h"

#include <memory>

namespace VFoundation {

class VBitmapContext;

/// Reads and writes Truevision Targa files.
///
/// What it reads: files with the footer of version 2 ("TRUEVISION-XFILE"), 8, 24 or 32 bits deep. Every file is
/// taken as uncompressed true colour with its bottom row first; image type, colour-map entries and origin bits
/// are not looked at, so that run-length-encoded and colour-mapped files give garbage or fail. 32 bits have
/// alpha; 8 bits become greys. Pictures of any size within `VImage::PixelBudget()` are read row by row, if their bytes
/// are really there.
///
/// What it writes: 32 bits, uncompressed, colours multiplied by alpha as bitmaps hold them, with the footer.
///
/// DELIBERATE: colours are multiplied by alpha / 256, not alpha / 255; opaque white in a 32-bit file comes out
/// as 254, and a picture saved and loaded gets darker each time.
/// DELIBERATE: with a colour map the pixels are expected at the ID length, without one 18 bytes later; a
/// colour-mapped file's header is read as pixels.
/// DELIBERATE: the ID length counts as a signed byte; 128 to 255 move the pixels into the header, and a
/// start before the file fails.
/// DELIBERATE: without the flip flag, rows are written from the top although the header says the bottom comes
/// first; such a file shows, and loads, upside down. Set the flag to write upright files.
///
/// Ownership, threads, memory: as `IImageIO`.
class VFOUNDATION_API VImageIOTarga : public ImageFileCodec {
  public:
    /// The shortest file: a header and a footer.
    static constexpr unsigned long kMinFileSize = 44;
    /// The longest side that a file's header has room for, in pixels.
    static constexpr std::uint32_t kMaxSide = 0xFFFF;

    /// How an existing file is saved over. In place, as by default, it is lost when saving fails. Replaced, the new
    /// file is written beside it and takes its name once it is complete and on the disk.
    enum class Saving { kInPlace, kReplacing };

    /// `flip` is what `SaveImageToFile` passes to `SaveImageFromPixelData`.
    explicit VImageIOTarga(bool flip = false, Saving saving = Saving::kInPlace) noexcept
        : m_flip(flip), m_saving(saving) {}

    /// Sets the image's bitmap, size and alpha flag.
    bool ConvertDataToImage(VData const& data, VImage& image) const override;
    bool SaveImageToFile(VImage const& image, VString const& path) const override;
    /// "tga".
    [[nodiscard]] VObjectArray* SupportedFileExtensions() const override;

    /// Writes the image's pixels, upside down with `flip`. False for an image without bitmap or with a side
    /// beyond `kMaxSide`, and when the file could not be made or written whole (`ImageLoadReason`).
    bool SaveImageFromPixelData(VImage const& image, VString const& path, bool flip) const;

    /// A transparent context of the size of the image; null for null and without memory.
    [[nodiscard]] static std::unique_ptr<VBitmapContext> CreateARGBBitmapContext(CGImage const* image);

    /// Frees the pixels of a loaded file; the release callback of their bitmap.
    static void ReleaseImageData(void* info, void const* data, unsigned long size);

  protected:
    VImage* LoadResolvedFile(VString const& path, bool exists) const override;

  private:
    bool m_flip;
    Saving m_saving;
};

} // namespace VFoundation
