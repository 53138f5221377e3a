#include "foundation/image/internal/JpegDecoder.h"

#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOJPEG.h"
#include "foundation/image/internal/ByteSource.h"
#include "foundation/image/internal/DecodeReport.h"
#include "foundation/image/internal/ErrorEscape.h"
#include "foundation/image/internal/ExifOrientation.h"
#include "foundation/image/internal/PixelBuffer.h"
#include "foundation/image/internal/PixelMath.h"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <iterator>
#include <memory>
#include <optional>

#include <jpeglib.h>

#include <jerror.h>

namespace VFoundation {

namespace {

/// Decodes one file.
class JpegDecoder {
  public:
    JpegDecoder(ByteSource& file, DecodeReport& report) : m_file(file), m_report(report) {}
    JpegDecoder(JpegDecoder const&) = delete;
    JpegDecoder& operator=(JpegDecoder const&) = delete;
    ~JpegDecoder() { jpeg_destroy_decompress(&m_info); }

    VBitmapImage* Decode();

  private:
    static constexpr std::size_t kBufferSize = 32UL * 1024;
    static constexpr std::size_t kMaxMarkerSize = 0xFFFF;
    static constexpr JDIMENSION kRowsAtATime = 16;

    static JpegDecoder& Of(j_common_ptr info) { return *static_cast<JpegDecoder*>(info->client_data); }
    static JpegDecoder& Of(j_decompress_ptr info) { return *static_cast<JpegDecoder*>(info->client_data); }

    // Called by libjpeg.
    static void OnError(j_common_ptr info);
    static void OnMessage(j_common_ptr info, int level);
    static void OnProgress(j_common_ptr info);
    static boolean OnBufferEmpty(j_decompress_ptr info);
    static void OnSkip(j_decompress_ptr info, long count);
    static boolean OnExif(j_decompress_ptr info);

    // The steps of the work.
    void ReadHeader();
    void Start();
    void ReadRows();

    std::uint64_t Pixels() const { return std::uint64_t{m_info.image_width} * m_info.image_height; }
    unsigned NextByte();
    [[noreturn]] void Fail(char const* reason) {
        m_report.Fail("%s", reason);
        m_errorEscape.Escape();
    }
    bool IsWithinLimits() const;
    bool IsInks() const { return m_info.out_color_space == JCS_CMYK; }
    void ConvertInks(std::uint32_t* row) const;

    ByteSource& m_file;
    DecodeReport& m_report;
    std::optional<PixelBuffer> m_pixels;
    bool m_fileEnded = false;
    bool m_hasExif = false;
    ErrorEscape m_errorEscape;
    jpeg_decompress_struct m_info{};
    jpeg_error_mgr m_errors{};
    jpeg_progress_mgr m_progress{};
    jpeg_source_mgr m_source{};
    JOCTET m_buffer[kBufferSize];
    JOCTET m_exif[kMaxMarkerSize];
};

void JpegDecoder::OnError(j_common_ptr info) {
    DecodeReport& report = Of(info).m_report;
    static_assert(sizeof report.reason >= JMSG_LENGTH_MAX);
    if (report.reason[0] == '\0') {
        info->err->format_message(info, report.reason);
    }
    Of(info).m_errorEscape.Escape();
}

/// Warnings are about damage that libjpeg bridges. Past the end of the file they mean that the picture lacks data.
void JpegDecoder::OnMessage(j_common_ptr info, int level) {
    if (level < 0 && Of(info).m_fileEnded) {
        Of(info).Fail("the file ends before its picture");
    }
}

/// Called for every row of blocks in every scan.
void JpegDecoder::OnProgress(j_common_ptr info) {
    JpegDecoder& self = Of(info);
    int const scans = self.m_info.input_scan_number;
    if (scans > VImageIOJPEG::kMaxScans ||
        static_cast<std::uint64_t>(scans) * self.Pixels() > VImageIOJPEG::kMaxScanPixels) {
        self.Fail("more scans than the limits allow");
    }
}

/// Past the end of the file, feed libjpeg an end-of-image marker.
boolean JpegDecoder::OnBufferEmpty(j_decompress_ptr info) {
    static constexpr JOCTET kEndOfImage[] = {0xFF, JPEG_EOI};
    JpegDecoder& self = Of(info);
    self.m_source.next_input_byte = self.m_buffer;
    self.m_source.bytes_in_buffer = self.m_file.Read(self.m_buffer, kBufferSize);
    if (self.m_file.HasFailed()) {
        self.Fail("the file could not be read");
    }
    if (self.m_source.bytes_in_buffer == 0) {
        self.m_fileEnded = true;
        self.m_source.next_input_byte = kEndOfImage;
        self.m_source.bytes_in_buffer = sizeof kEndOfImage;
    }
    return TRUE;
}

void JpegDecoder::OnSkip(j_decompress_ptr info, long count) {
    jpeg_source_mgr& source = *info->src;
    for (auto left = static_cast<std::size_t>(std::max(count, 0L)); left > 0;) {
        if (source.bytes_in_buffer == 0) {
            OnBufferEmpty(info);
        }
        std::size_t const skipped = std::min(left, source.bytes_in_buffer);
        source.next_input_byte += skipped;
        source.bytes_in_buffer -= skipped;
        left -= skipped;
    }
}

unsigned JpegDecoder::NextByte() {
    if (m_source.bytes_in_buffer == 0) {
        OnBufferEmpty(&m_info);
    }
    --m_source.bytes_in_buffer;
    return *m_source.next_input_byte++;
}

/// Called for each marker that may hold Exif data; the first one that does counts. The camera's data is not needed for
/// the pixels, so that nothing in it is an error.
boolean JpegDecoder::OnExif(j_decompress_ptr info) {
    static constexpr unsigned char kExif[] = {'E', 'x', 'i', 'f', 0, 0};
    constexpr std::size_t kLengthSize = 2;
    JpegDecoder& self = Of(info);
    std::size_t const high = self.NextByte();
    std::size_t const length = high << 8 | self.NextByte();
    std::size_t const count = std::max(length, kLengthSize) - kLengthSize;
    for (std::size_t i = 0; i < count; ++i) {
        self.m_exif[i] = static_cast<JOCTET>(self.NextByte());
    }
    if (count > sizeof kExif && !self.m_hasExif && std::equal(kExif, std::end(kExif), self.m_exif)) {
        self.m_hasExif = true;
        self.m_report.orientation =
            std::max(1, ExifOrientation(self.m_exif + sizeof kExif, count - sizeof kExif));
    }
    return TRUE;
}

void JpegDecoder::ReadHeader() {
    jpeg_create_decompress(&m_info);
    m_info.client_data = this;
    m_info.progress = &m_progress;
    m_progress.progress_monitor = &OnProgress;
    m_info.src = &m_source;
    m_source.init_source = [](j_decompress_ptr) {};
    m_source.fill_input_buffer = &OnBufferEmpty;
    m_source.skip_input_data = &OnSkip;
    m_source.resync_to_restart = &jpeg_resync_to_restart;
    m_source.term_source = [](j_decompress_ptr) {};
    jpeg_set_marker_processor(&m_info, JPEG_APP0 + 1, &OnExif);
    jpeg_read_header(&m_info, TRUE);
}

/// Has libjpeg produce the pixels as bitmaps hold them; inks are converted afterwards.
void JpegDecoder::Start() {
    bool const isInks = m_info.jpeg_color_space == JCS_CMYK || m_info.jpeg_color_space == JCS_YCCK;
    m_info.out_color_space = isInks                                       ? JCS_CMYK
                             : std::endian::native == std::endian::little ? JCS_EXT_BGRA
                                                                          : JCS_EXT_ARGB;
    jpeg_start_decompress(&m_info);
}

void JpegDecoder::ReadRows() {
    while (m_info.output_scanline < m_info.output_height) {
        JDIMENSION const first = m_info.output_scanline;
        JDIMENSION const wanted = std::min(kRowsAtATime, m_info.output_height - first);
        JSAMPROW rows[kRowsAtATime];
        for (JDIMENSION i = 0; i < wanted; ++i) {
            rows[i] = reinterpret_cast<JSAMPROW>(m_pixels->Row(first + i));
        }
        JDIMENSION const read = jpeg_read_scanlines(&m_info, rows, wanted);
        for (JDIMENSION i = 0; IsInks() && i < read; ++i) {
            ConvertInks(m_pixels->Row(first + i));
        }
    }
}

/// Makes colours of cyan, magenta, yellow and black in place. Files with the Adobe marker store them inverted: the light
/// that is left, not the ink.
void JpegDecoder::ConvertInks(std::uint32_t* row) const {
    unsigned const inverted = m_info.saw_Adobe_marker ? 0x00 : 0xFF;
    auto const* inks = reinterpret_cast<unsigned char const*>(row);
    for (JDIMENSION x = 0; x < m_info.output_width; ++x, inks += 4) {
        std::uint32_t pixel = PixelMath::kAlpha;
        for (unsigned i = 0; i < 3; ++i) {
            unsigned const light = (inks[i] ^ inverted) * (inks[3] ^ inverted);
            pixel |= (light + 127) / 255 << (16 - 8 * i);
        }
        row[x] = pixel;
    }
}

bool JpegDecoder::IsWithinLimits() const {
    bool const isBacked = Pixels() <= VImageIOJPEG::kMaxUnbackedPixels ||
                          Pixels() / VImageIOJPEG::kMaxPixelsPerByte <= m_file.Size();
    return m_info.image_width <= VImageIOJPEG::kMaxSide && m_info.image_height <= VImageIOJPEG::kMaxSide &&
           Pixels() <= std::min(VImageIOJPEG::kMaxPixels, VImage::PixelBudget()) && isBacked;
}

VBitmapImage* JpegDecoder::Decode() {
    m_info.err = jpeg_std_error(&m_errors);
    m_errors.error_exit = &OnError;
    m_errors.emit_message = &OnMessage;
    m_info.client_data = this;
    if (!m_errorEscape.Run(*this, &JpegDecoder::ReadHeader)) {
        return nullptr;
    }
    if (!IsWithinLimits()) {
        m_report.Fail("%u x %u pixels are more than the limits or the length of the file allow",
                      m_info.image_width, m_info.image_height);
        return nullptr;
    }
    if (!m_errorEscape.Run(*this, &JpegDecoder::Start)) {
        return nullptr;
    }
    m_pixels.emplace(m_info.output_width, m_info.output_height);
    if (!m_pixels->IsValid()) {
        m_report.Fail("there is no memory for %u x %u pixels", m_info.image_width, m_info.image_height);
        return nullptr;
    }
    if (!m_errorEscape.Run(*this, &JpegDecoder::ReadRows)) {
        return nullptr;
    }
    // No warning tells of missing scans, or of missing data with arithmetic coding, which decodes as zeros.
    if (m_fileEnded && (jpeg_has_multiple_scans(&m_info) || m_info.arith_code)) {
        m_report.Fail("the file ends before its picture");
        return nullptr;
    }
    return m_pixels->IntoImage();
}

} // namespace

VBitmapImage* DecodeJpeg(ByteSource& file, DecodeReport& report) {
    return std::make_unique<JpegDecoder>(file, report)->Decode();
}

} // namespace VFoundation
