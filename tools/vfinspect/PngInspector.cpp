#include "tools/vfinspect/PngInspector.h"

#include "foundation/image/VImageIOPNG.h"
#include "tools/vfinspect/Text.h"

#include <algorithm>

namespace vfinspect {

namespace {

using VFoundation::VImageIOPNG;

constexpr std::uint64_t kChunkFrame = 12; // length, type, checksum
constexpr std::uint64_t kShownBytes = 17; // one more than are printed
constexpr std::uint64_t kMaxChunk = 0x7FFFFFFF;
enum ColourType : std::uint64_t { kGrey = 0, kColour = 2, kPalette = 3, kGreyAlpha = 4, kColourAlpha = 6 };

bool IsType(std::string_view type) {
    return type.size() == 4 && std::all_of(type.begin(), type.end(), [](char c) {
               return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
           });
}

/// Whether the standard has pictures of this depth and colour type.
bool IsDepthOf(std::uint64_t colourType, std::uint64_t depth) {
    bool const isSmall = depth == 1 || depth == 2 || depth == 4;
    switch (colourType) {
    case kGrey:
        return isSmall || depth == 8 || depth == 16;
    case kPalette:
        return isSmall || depth == 8;
    case kColour:
    case kGreyAlpha:
    case kColourAlpha:
        return depth == 8 || depth == 16;
    default:
        return false;
    }
}

} // namespace

void PngInspector::Inspect() {
    m_report.Add(0, std::min<std::uint64_t>(kSignature.size(), m_source.Size()), "signature");
    if (!IsPng(m_source)) {
        std::string const found = m_source.Text(0, kSignature.size());
        auto const place = std::mismatch(found.begin(), found.end(), kSignature.begin()).first;
        m_report.AddProblem(static_cast<std::uint64_t>(place - found.begin()),
                            "the file does not begin with the signature of PNG");
    }
    std::uint64_t at = kSignature.size();
    while (at < m_source.Size() && m_previous != "IEND") {
        at = ReadChunk(at);
    }
    if (m_previous != "IEND") {
        m_report.AddProblem(m_source.Size(), "the file ends without \"IEND\"");
    } else if (at < m_source.Size()) {
        m_report.Add(at, m_source.Size() - at, "after the picture");
    }
    if (!m_hasPixels) {
        m_report.AddProblem(std::min(at, m_source.Size()), "there are no pixels: no \"IDAT\"");
    }
}

/// Returns where the next chunk begins.
std::uint64_t PngInspector::ReadChunk(std::uint64_t at) {
    std::uint64_t const available = m_source.Size() - at;
    if (available < kChunkFrame) {
        m_report.AddProblem(at, Counted(available, "byte") + " left, a chunk takes 12 at least");
        return m_source.Size();
    }
    Chunk chunk{m_source.Text(at + 4, 4), at, at + 8, m_source.Number(at, 4, false)};
    if (!IsType(chunk.type)) {
        m_report.AddProblem(at + 4, Quoted(chunk.type) + " is not the type of a chunk");
        return m_source.Size();
    }
    if (chunk.length > kMaxChunk || chunk.length > available - kChunkFrame) {
        m_report.AddProblem(at, "chunk " + Quoted(chunk.type) + " claims " + Counted(chunk.length, "byte") +
                                    ", " + std::to_string(available - kChunkFrame) + " are left");
        return m_source.Size();
    }
    std::uint64_t const end = chunk.body + chunk.length + 4;
    m_report.Open(at, "chunk " + Quoted(chunk.type));
    CheckPlace(chunk);
    ReadBody(chunk);
    std::uint64_t const stored = m_source.Number(end - 4, 4, false);
    if (stored != m_source.Checksum(at + 4, chunk.length + 4)) {
        m_report.AddProblem(end - 4, "the checksum of chunk " + Quoted(chunk.type) + " is wrong");
    }
    m_report.Close(end);
    m_previous = chunk.type;
    return end;
}

void PngInspector::CheckPlace(Chunk const& chunk) {
    bool const isHeader = chunk.type == "IHDR";
    if (m_previous.empty() != isHeader) {
        m_report.AddProblem(chunk.offset, isHeader ? "a second \"IHDR\"" : "the first chunk is not \"IHDR\"");
    }
    if (chunk.type == "PLTE") {
        if (m_hasPalette || m_hasPixels || chunk.length == 0 || chunk.length % 3 != 0 || chunk.length > 768) {
            m_report.AddProblem(chunk.offset,
                                "a palette stands once, before the pixels, with 1 to 256 colours");
        }
        m_hasPalette = true;
    } else if (chunk.type == "IDAT") {
        if (m_hasPixels && m_previous != "IDAT") {
            m_report.AddProblem(chunk.offset, "the chunks \"IDAT\" do not stand together");
        }
        if (m_needsPalette && !m_hasPalette) {
            m_report.AddProblem(chunk.offset, "pixels before their palette");
            m_needsPalette = false;
        }
        m_hasPixels = true;
    } else if (chunk.type == "IEND" && chunk.length != 0) {
        m_report.AddProblem(chunk.offset, "\"IEND\" is not empty");
    } else if (!isHeader && chunk.type != "IEND" && (chunk.type.front() & 0x20) == 0) {
        m_report.AddProblem(chunk.offset + 4, "the critical chunk " + Quoted(chunk.type) + " is not known");
    }
}

void PngInspector::ReadBody(Chunk const& chunk) {
    std::string const start = m_source.Text(chunk.body, std::min(chunk.length, kShownBytes));
    if (chunk.type == "IHDR") {
        ReadHeader(chunk);
    } else if (chunk.type == "tEXt") {
        std::string const text = m_source.Text(chunk.body, std::min<std::uint64_t>(chunk.length, 300));
        std::size_t const end = std::min(text.find('\0'), text.size());
        m_report.SetValue(Quoted(text.substr(0, end)) + " = " +
                          Quoted(text.substr(std::min(end + 1, text.size()))));
    } else if (chunk.type == "PLTE") {
        m_report.SetValue(Counted(chunk.length / 3, "colour"));
    } else if (!start.empty()) {
        m_report.SetValue(Hexadecimal(start));
    }
}

std::uint64_t PngInspector::Field(std::uint64_t offset, unsigned bytes, char const* label) {
    std::uint64_t const value = m_source.Number(offset, bytes, false);
    m_report.Add(offset, bytes, label, std::to_string(value));
    return value;
}

void PngInspector::ReadHeader(Chunk const& chunk) {
    if (chunk.length != 13) {
        m_report.AddProblem(chunk.offset, "\"IHDR\" has 13 bytes, not " + std::to_string(chunk.length));
        return;
    }
    std::uint64_t const width = Field(chunk.body, 4, "width");
    std::uint64_t const height = Field(chunk.body + 4, 4, "height");
    std::uint64_t const depth = Field(chunk.body + 8, 1, "bit depth");
    std::uint64_t const colourType = Field(chunk.body + 9, 1, "colour type");
    std::uint64_t const methods =
        Field(chunk.body + 10, 1, "compression") + Field(chunk.body + 11, 1, "filter");
    std::uint64_t const interlacing = Field(chunk.body + 12, 1, "interlacing");
    m_needsPalette = colourType == kPalette;
    if (std::min(width, height) < 1 || std::max(width, height) > VImageIOPNG::kMaxSide) {
        m_report.AddProblem(chunk.body,
                            "a side has 1 to " + std::to_string(VImageIOPNG::kMaxSide) + " pixels");
    } else if (width * height > VImageIOPNG::kMaxPixels) {
        m_report.AddProblem(chunk.body, "the picture has more than " +
                                            std::to_string(VImageIOPNG::kMaxPixels) + " pixels");
    }
    if (!IsDepthOf(colourType, depth)) {
        m_report.AddProblem(chunk.body + 8, "there is no bit depth " + std::to_string(depth) +
                                                " of colour type " + std::to_string(colourType));
    }
    if (methods != 0 || interlacing > 1) {
        m_report.AddProblem(chunk.body + 10, "a compression, filter or interlacing that is not known");
    }
}

} // namespace vfinspect
