#include "foundation/image/internal/PngEncoder.h"

#include "foundation/image/VBitmapImage.h"
#include "foundation/image/internal/DecodeReport.h"
#include "foundation/image/internal/ErrorEscape.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include <png.h>

namespace VFoundation {

namespace {

constexpr std::uint32_t kOpaque = 0xFF;

bool IsOpaque(VBitmapImage const& bitmap) noexcept {
    std::uint32_t all = kOpaque << 24;
    for (std::uint32_t y = 0; y < bitmap.Height(); ++y) {
        std::uint32_t const* const row = bitmap.Row(y);
        for (std::uint32_t x = 0; x < bitmap.Width(); ++x) {
            all &= row[x];
        }
    }
    return all >> 24 == kOpaque;
}

/// Writes one file.
class PngEncoder {
  public:
    PngEncoder(VBitmapImage const& bitmap, int compression, ByteSink& sink, DecodeReport& report)
        : m_bitmap(bitmap), m_compression(compression), m_sink(sink), m_report(report),
          m_isOpaque(IsOpaque(bitmap)), m_row((m_isOpaque ? 3UL : 4UL) * bitmap.Width()) {}
    PngEncoder(PngEncoder const&) = delete;
    PngEncoder& operator=(PngEncoder const&) = delete;
    ~PngEncoder() { png_destroy_write_struct(&m_png, &m_info); }

    bool Encode() { return m_errorEscape.Run(*this, &PngEncoder::Write); }

  private:
    // Called by libpng.
    static void OnError(png_structp png, png_const_charp message) {
        auto& self = *static_cast<PngEncoder*>(png_get_error_ptr(png));
        if (!self.m_sinkFailed) {
            self.m_report.Fail("%s", message);
        }
        self.m_errorEscape.Escape();
    }
    static void OnWarning(png_structp, png_const_charp) {}
    static void OnWrite(png_structp png, png_bytep bytes, std::size_t count) {
        auto& self = *static_cast<PngEncoder*>(png_get_io_ptr(png));
        self.m_sinkFailed = !self.m_sink.Write(bytes, count);
        if (self.m_sinkFailed) {
            png_error(png, "not written");
        }
    }
    static void OnFlush(png_structp) {}

    void Write();
    void FillRow(std::uint32_t const* row);

    VBitmapImage const& m_bitmap;
    int m_compression;
    ByteSink& m_sink;
    DecodeReport& m_report;
    bool m_isOpaque;
    bool m_sinkFailed = false;
    std::vector<png_byte> m_row;
    ErrorEscape m_errorEscape;
    png_structp m_png = nullptr;
    png_infop m_info = nullptr;
};

/// Undoes the multiplication by alpha. The result is rounded, so that multiplying and rounding again gives the same.
void PngEncoder::FillRow(std::uint32_t const* row) {
    png_byte* to = m_row.data();
    for (std::uint32_t x = 0; x < m_bitmap.Width(); ++x) {
        std::uint32_t const alpha = row[x] >> 24;
        for (unsigned const shift : {16U, 8U, 0U}) {
            std::uint32_t const colour = row[x] >> shift & 0xFF;
            bool const isPlain = alpha == kOpaque || alpha == 0;
            std::uint32_t const plain =
                isPlain ? std::min(colour, alpha) : std::min((colour * kOpaque + alpha / 2) / alpha, kOpaque);
            *to++ = static_cast<png_byte>(plain);
        }
        if (!m_isOpaque) {
            *to++ = static_cast<png_byte>(alpha);
        }
    }
}

void PngEncoder::Write() {
    m_png = png_create_write_struct(PNG_LIBPNG_VER_STRING, this, &OnError, &OnWarning);
    m_info = m_png ? png_create_info_struct(m_png) : nullptr;
    if (!m_info) {
        m_report.Fail("there is no memory for the encoder");
        m_errorEscape.Escape();
    }
    png_set_write_fn(m_png, this, &OnWrite, &OnFlush);
    png_set_compression_level(m_png, m_compression);
    png_set_IHDR(m_png, m_info, m_bitmap.Width(), m_bitmap.Height(), 8,
                 m_isOpaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(m_png, m_info);
    for (std::uint32_t y = 0; y < m_bitmap.Height(); ++y) {
        FillRow(m_bitmap.Row(y));
        png_write_row(m_png, m_row.data());
    }
    png_write_end(m_png, nullptr);
}

} // namespace

bool EncodePng(VBitmapImage const& bitmap, int compression, ByteSink& sink, DecodeReport& report) {
    return PngEncoder(bitmap, compression, sink, report).Encode();
}

} // namespace VFoundation
