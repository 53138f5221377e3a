#include "foundation/image/internal/PngDecoder.h"

#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOPNG.h"
#include "foundation/image/internal/ByteSource.h"
#include "foundation/image/internal/DecodeReport.h"
#include "foundation/image/internal/ErrorEscape.h"
#include "foundation/image/internal/ExifOrientation.h"
#include "foundation/image/internal/PixelBuffer.h"
#include "foundation/image/internal/PixelMath.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <optional>

#include <png.h>

namespace VFoundation {

namespace {

/// Decodes one file.
class PngDecoder {
  public:
    PngDecoder(ByteSource& file, DecodeReport& report) : m_file(file), m_report(report) {}
    PngDecoder(PngDecoder const&) = delete;
    PngDecoder& operator=(PngDecoder const&) = delete;
    ~PngDecoder() { png_destroy_read_struct(&m_png, &m_info, nullptr); }

    VBitmapImage* Decode();

  private:
    // Called by libpng.
    static void OnError(png_structp png, png_const_charp message) {
        auto& self = *static_cast<PngDecoder*>(png_get_error_ptr(png));
        self.m_report.Fail("%s", message);
        self.m_errorEscape.Escape();
    }
    static void OnWarning(png_structp, png_const_charp) {}
    static void OnRead(png_structp png, png_bytep bytes, std::size_t count);

    // The steps of the work.
    void ReadHeader();
    void ReadRows();

    bool IsWithinLimits() const;
    void Transform();
    void PremultiplyRow(png_uint_32 y) {
        std::uint32_t* const row = m_pixels->Row(y);
        PixelMath::Premultiply<PixelMath::Rounded>(row, row, m_pixels->Width());
    }

    ByteSource& m_file;
    DecodeReport& m_report;
    std::optional<PixelBuffer> m_pixels;
    ErrorEscape m_errorEscape;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
};

void PngDecoder::OnRead(png_structp png, png_bytep bytes, std::size_t count) {
    ByteSource& file = static_cast<PngDecoder*>(png_get_io_ptr(png))->m_file;
    if (file.Read(bytes, count) != count) {
        png_error(png, file.HasFailed() ? "the file could not be read" : "the file ends before its picture");
    }
}

void PngDecoder::ReadHeader() {
    m_png = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, &OnError, &OnWarning);
    m_info = m_png ? png_create_info_struct(m_png) : nullptr;
    if (!m_info) {
        m_report.Fail("there is no memory for the decoder");
        m_errorEscape.Escape();
    }
    png_set_read_fn(m_png, this, &OnRead);
    png_set_user_limits(m_png, VImageIOPNG::kMaxSide, VImageIOPNG::kMaxSide);
    png_set_chunk_malloc_max(m_png, VImageIOPNG::kMaxChunkSize);
    png_set_chunk_cache_max(m_png, VImageIOPNG::kMaxChunks);
    png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1); // skip what is not pixels
    static constexpr png_byte kExif[] = "eXIf";
    png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_AS_DEFAULT, kExif, 1);
    png_read_info(m_png, m_info);
    png_uint_32 exifLength = 0;
    png_bytep exif = nullptr;
    if (png_get_eXIf_1(m_png, m_info, &exifLength, &exif) != 0) {
        m_report.orientation = std::max(1, ExifOrientation(exif, exifLength));
    }
}

/// Has libpng produce the pixels as bitmaps hold them, but for the multiplication by alpha.
void PngDecoder::Transform() {
    png_set_expand(m_png);
    png_set_scale_16(m_png);
    png_set_gray_to_rgb(m_png);
    if (std::endian::native == std::endian::little) {
        png_set_bgr(m_png);
        png_set_add_alpha(m_png, 0xFF, PNG_FILLER_AFTER);
    } else {
        png_set_swap_alpha(m_png);
        png_set_add_alpha(m_png, 0xFF, PNG_FILLER_BEFORE);
    }
}

void PngDecoder::ReadRows() {
    bool const hasAlpha = (png_get_color_type(m_png, m_info) & PNG_COLOR_MASK_ALPHA) != 0 ||
                          png_get_valid(m_png, m_info, PNG_INFO_tRNS) != 0;
    m_report.hasAlpha = hasAlpha;
    Transform();
    int const passes = png_set_interlace_handling(m_png);
    png_read_update_info(m_png, m_info);
    if (png_get_rowbytes(m_png, m_info) != VBitmapImage::kBytesPerPixel * m_pixels->Width()) {
        png_error(m_png, "rows of another size");
    }
    for (int pass = 1; pass <= passes; ++pass) {
        for (png_uint_32 y = 0; y < m_pixels->Height(); ++y) {
            png_read_row(m_png, reinterpret_cast<png_bytep>(m_pixels->Row(y)), nullptr);
            if (hasAlpha && pass == passes) {
                PremultiplyRow(y);
            }
        }
    }
    png_read_end(m_png, nullptr);
}

/// Whether the picture is small enough, and the file long enough that its pixels may be in it.
bool PngDecoder::IsWithinLimits() const {
    constexpr std::uint64_t kBestCompression = 1032; // of zlib: 258 bytes in 2 bits
    std::uint64_t const pixels =
        std::uint64_t{png_get_image_width(m_png, m_info)} * png_get_image_height(m_png, m_info);
    std::uint64_t const bitsPerPixel =
        std::uint64_t{png_get_bit_depth(m_png, m_info)} * png_get_channels(m_png, m_info);
    return pixels <= std::min(VImageIOPNG::kMaxPixels, VImage::PixelBudget()) &&
           pixels * bitsPerPixel / 8 / kBestCompression <= m_file.Size();
}

VBitmapImage* PngDecoder::Decode() {
    if (!m_errorEscape.Run(*this, &PngDecoder::ReadHeader)) {
        return nullptr;
    }
    png_uint_32 const width = png_get_image_width(m_png, m_info);
    png_uint_32 const height = png_get_image_height(m_png, m_info);
    if (!IsWithinLimits()) {
        m_report.Fail("%u x %u pixels are more than the limits or the length of the file allow", width,
                      height);
        return nullptr;
    }
    m_pixels.emplace(width, height);
    if (!m_pixels->IsValid()) {
        m_report.Fail("there is no memory for %u x %u pixels", width, height);
        return nullptr;
    }
    return m_errorEscape.Run(*this, &PngDecoder::ReadRows) ? m_pixels->IntoImage() : nullptr;
}

} // namespace

VBitmapImage* DecodePng(ByteSource& file, DecodeReport& report) {
    return PngDecoder(file, report).Decode();
}

} // namespace VFoundation
