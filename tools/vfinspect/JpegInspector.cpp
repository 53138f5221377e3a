#include "tools/vfinspect/JpegInspector.h"

#include "foundation/image/VImageIOJPEG.h"
#include "tools/vfinspect/Text.h"

#include <algorithm>
#include <array>

namespace vfinspect {

namespace {

using VFoundation::VImageIOJPEG;

constexpr std::uint64_t kShownBytes = 17; // one more than are printed

// The second bytes of the markers.
constexpr unsigned kRestart0 = 0xD0;
constexpr unsigned kStartOfImage = 0xD8;
constexpr unsigned kEndOfImage = 0xD9;
constexpr unsigned kStartOfScan = 0xDA;
constexpr unsigned kQuantisation = 0xDB;
constexpr unsigned kRestartInterval = 0xDD;
constexpr unsigned kHuffman = 0xC4;
constexpr unsigned kArithmetic = 0xCC;
constexpr unsigned kReserved = 0xC8;

constexpr bool IsFrame(unsigned marker) noexcept {
    return (marker & 0xF0) == 0xC0 && marker != kHuffman && marker != kArithmetic && marker != kReserved;
}

constexpr bool IsRestart(unsigned marker) noexcept {
    return marker >= kRestart0 && marker < kStartOfImage;
}

/// Of the 13 kinds of frame, those that the library reads: 8 bits, in sequence or progressive.
constexpr bool IsReadFrame(unsigned marker) noexcept {
    return marker <= 0xC2 || marker == 0xC9 || marker == 0xCA;
}

std::string NameOf(unsigned marker) {
    constexpr struct {
        unsigned marker;
        char const* name;
    } kNames[] = {{kStartOfImage, "SOI"},
                  {kEndOfImage, "EOI"},
                  {kStartOfScan, "SOS"},
                  {kQuantisation, "DQT"},
                  {kRestartInterval, "DRI"},
                  {kHuffman, "DHT"},
                  {kArithmetic, "DAC"},
                  {0xDC, "DNL"},
                  {0xDE, "DHP"},
                  {0xDF, "EXP"},
                  {0xFE, "COM"},
                  {0x01, "TEM"}};
    for (auto const& row : kNames) {
        if (row.marker == marker) {
            return row.name;
        }
    }
    if (IsFrame(marker)) {
        return "SOF" + std::to_string(marker - 0xC0);
    }
    if (IsRestart(marker)) {
        return "RST" + std::to_string(marker - kRestart0);
    }
    if (marker >= 0xE0 && marker <= 0xEF) {
        return "APP" + std::to_string(marker - 0xE0);
    }
    return "";
}

} // namespace

void JpegInspector::Inspect() {
    if (!IsJpeg(m_source)) {
        m_report.AddProblem(m_source.Byte(0) == 0xFF ? 1 : 0, "the file does not begin with the marker SOI");
    }
    m_report.Add(0, std::min<std::uint64_t>(2, m_source.Size()), "SOI");
    std::uint64_t at = 2;
    while (at < m_source.Size() && !m_hasEnded) {
        at = ReadMarker(at);
    }
    if (!m_hasEnded) {
        m_report.AddProblem(m_source.Size(), "the file ends without the marker EOI");
    } else if (at < m_source.Size()) {
        m_report.Add(at, m_source.Size() - at, "after the picture");
    }
    if (!m_hasScan) {
        m_report.AddProblem(std::min(at, m_source.Size()), "there are no pixels: no marker SOS");
    }
}

/// Returns where the next marker is.
std::uint64_t JpegInspector::ReadMarker(std::uint64_t at) {
    std::uint64_t marked = m_source.Find(0xFF, at);
    if (marked > at) {
        m_report.AddProblem(at, Counted(marked - at, "byte") + " where a marker should be");
    }
    std::uint64_t const code = m_source.FindOther(0xFF, marked); // any number of FF may stand before it
    if (code == m_source.Size()) {
        return code;
    }
    marked = code - 1;
    unsigned const marker = m_source.Byte(marked + 1);
    std::string const name = NameOf(marker);
    if (name.empty()) {
        m_report.AddProblem(marked, "there is no marker " + std::to_string(marker));
        return marked + 2;
    }
    if (marker == kStartOfImage || IsRestart(marker) || marker == 0x01) {
        m_report.AddProblem(marked, "marker " + name + " has no place here");
        return marked + 2;
    }
    if (marker == kEndOfImage) {
        m_hasEnded = true;
        m_report.Add(marked, 2, name);
        return marked + 2;
    }
    return ReadSegment(marked, marker);
}

std::uint64_t JpegInspector::ReadSegment(std::uint64_t at, unsigned marker) {
    std::uint64_t const length = m_source.Number(at + 2, 2, false);
    std::uint64_t const available = m_source.Size() - at - 2;
    Segment const segment{marker, at, at + 4, at + 2 + length};
    if (length < 2 || length > available) {
        m_report.AddProblem(at + 2, "marker " + NameOf(marker) + " claims " + Counted(length, "byte") + ", " +
                                        std::to_string(available) + " are left");
        return length < 2 ? at + 2 : m_source.Size();
    }
    m_report.Open(at, NameOf(marker));
    ReadBody(segment);
    m_report.Close(segment.end);
    return marker == kStartOfScan ? ReadData(segment.end) : segment.end;
}

void JpegInspector::ReadBody(Segment const& segment) {
    if (IsFrame(segment.marker)) {
        ReadFrame(segment);
        return;
    }
    switch (segment.marker) {
    case kStartOfScan:
        ReadScan(segment);
        break;
    case kQuantisation:
        ReadQuantisation(segment);
        break;
    case kHuffman:
        ReadHuffman(segment);
        break;
    case kRestartInterval:
        if (segment.end - segment.body != 2) {
            AddFault(segment, "a restart interval has 2 bytes");
        }
        m_restartEvery = m_source.Number(segment.body, 2, false);
        m_report.SetValue("restarts every " + Counted(m_restartEvery, "block"));
        break;
    case kArithmetic:
        if ((segment.end - segment.body) % 2 != 0) {
            AddFault(segment, "conditions come in pairs of bytes");
        }
        break;
    default: {
        std::uint64_t const shown = std::min<std::uint64_t>(segment.end - segment.body, 60);
        m_report.SetValue(Quoted(m_source.Text(segment.body, shown), 60));
        break;
    }
    }
}

void JpegInspector::ReadFrame(Segment const& segment) {
    unsigned const precision = m_source.Byte(segment.body);
    std::uint64_t const height = m_source.Number(segment.body + 1, 2, false);
    std::uint64_t const width = m_source.Number(segment.body + 3, 2, false);
    std::uint64_t const components = m_source.Byte(segment.body + 5);
    std::uint64_t const most = std::max(width, height);
    m_report.SetValue(std::to_string(width) + " x " + std::to_string(height) + ", " +
                      Counted(components, "component") + ", " + Counted(precision, "bit"));
    if (!m_components.empty()) {
        AddFault(segment, "a second frame");
    }
    if (!IsReadFrame(segment.marker)) {
        AddFault(segment, "a frame " + NameOf(segment.marker) + " is not read");
    }
    if (precision != 8) {
        m_report.AddProblem(segment.body, "samples of " + Counted(precision, "bit") + " are not read");
    }
    if (std::min(width, height) < 1 || most > VImageIOJPEG::kMaxSide ||
        width * height > VImageIOJPEG::kMaxPixels) {
        m_report.AddProblem(segment.body + 1, "a side has 1 to " + std::to_string(VImageIOJPEG::kMaxSide) +
                                                  " pixels, a picture " +
                                                  std::to_string(VImageIOJPEG::kMaxPixels) + " at most");
    }
    if (components < 1 || components == 2 || components > 4 ||
        segment.end - segment.body != 6 + 3 * components) {
        m_report.AddProblem(segment.body + 5, Counted(components, "component") + " in a frame of " +
                                                  Counted(segment.end - segment.body, "byte"));
        return;
    }
    m_isArithmetic = segment.marker >= 0xC9;
    m_components.clear();
    m_quantisationOf.clear();
    for (std::uint64_t i = 0; i < components; ++i) {
        std::uint64_t const at = segment.body + 6 + 3 * i;
        unsigned const sampling = m_source.Byte(at + 1);
        unsigned const table = m_source.Byte(at + 2);
        m_report.Add(at, 3, "component " + std::to_string(m_source.Byte(at)),
                     "sampling " + std::to_string(sampling >> 4) + " x " + std::to_string(sampling & 15) +
                         ", quantisation table " + std::to_string(table));
        if (sampling >> 4 < 1 || sampling >> 4 > 4 || (sampling & 15) < 1 || (sampling & 15) > 4) {
            m_report.AddProblem(at + 1, "sampling factors are 1 to 4");
        }
        if (table > 3) {
            m_report.AddProblem(at + 2, "quantisation tables are 0 to 3");
        }
        m_components += static_cast<char>(m_source.Byte(at));
        m_quantisationOf += static_cast<char>(table & 3);
    }
}

void JpegInspector::ReadQuantisation(Segment const& segment) {
    std::uint64_t at = segment.body;
    while (at < segment.end) {
        unsigned const head = m_source.Byte(at);
        std::uint64_t const size = (head >> 4 == 0 ? 64 : 128) + 1;
        if (head >> 4 > 1 || (head & 15) > 3 || size > segment.end - at) {
            m_report.AddProblem(at, "no quantisation table of " + Counted(segment.end - at, "byte") +
                                        " begins with " + std::to_string(head));
            return;
        }
        m_quantisations |= 1U << (head & 3);
        m_report.Add(at, size, "table " + std::to_string(head & 15));
        at += size;
    }
}

void JpegInspector::ReadHuffman(Segment const& segment) {
    std::uint64_t at = segment.body;
    while (at < segment.end) {
        unsigned const head = m_source.Byte(at);
        std::array<unsigned char, 16> lengths{};
        m_source.Read(at + 1, lengths.data(), lengths.size());
        std::uint64_t codes = 0;
        std::uint64_t used = 0; // of the 65536 codes of 16 bits
        for (unsigned i = 0; i < 16; ++i) {
            codes += lengths[i];
            used += std::uint64_t{lengths[i]} << (15 - i);
        }
        if (head >> 4 > 1 || (head & 15) > 3 || codes > 256 || 17 + codes > segment.end - at) {
            m_report.AddProblem(at, "no code table of " + Counted(segment.end - at, "byte") +
                                        " begins with " + std::to_string(head) + " and has " +
                                        Counted(codes, "code"));
            return;
        }
        if (used > 65536) {
            m_report.AddProblem(at + 1, "the lengths of the codes leave no room for all of them");
        }
        m_huffmanTables |= 1U << ((head & 3) + (head >> 4 != 0 ? 4 : 0));
        m_report.Add(at, 17 + codes,
                     std::string(head >> 4 == 0 ? "DC" : "AC") + " table " + std::to_string(head & 15),
                     Counted(codes, "code"));
        at += 17 + codes;
    }
}

void JpegInspector::ReadScan(Segment const& segment) {
    m_hasScan = true;
    std::uint64_t const components = m_source.Byte(segment.body);
    m_report.SetValue(Counted(components, "component"));
    if (++m_scans == VImageIOJPEG::kMaxScans + 1) {
        AddFault(segment, "more than " + Counted(VImageIOJPEG::kMaxScans, "scan"));
    }
    if (components < 1 || components > 4 || segment.end - segment.body != 4 + 2 * components) {
        m_report.AddProblem(segment.body, Counted(components, "component") + " in a scan header of " +
                                              Counted(segment.end - segment.body, "byte"));
        return;
    }
    std::uint64_t const bands = segment.body + 1 + 2 * components;
    bool const hasDC = m_source.Byte(bands) == 0;
    for (std::uint64_t i = 0; i < components; ++i) {
        std::uint64_t const at = segment.body + 1 + 2 * i;
        std::size_t const which = m_components.find(static_cast<char>(m_source.Byte(at)));
        unsigned const tables = m_source.Byte(at + 1);
        if (which == std::string::npos) {
            m_report.AddProblem(at, "the frame has no component " + std::to_string(m_source.Byte(at)));
        } else if ((m_quantisations >> m_quantisationOf[which] & 1) == 0) {
            m_report.AddProblem(at, "quantisation table " + std::to_string(m_quantisationOf[which]) +
                                        " is not defined");
        }
        bool const isDefined = tables >> 4 <= 3 && (!hasDC || (m_huffmanTables >> (tables >> 4) & 1) != 0);
        if (!m_isArithmetic && m_source.Byte(bands + 2) >> 4 == 0 && !isDefined) {
            m_report.AddProblem(at + 1, "code table " + std::to_string(tables >> 4) + " is not defined");
        }
    }
    if (m_source.Byte(bands) > 63 || m_source.Byte(bands + 1) > 63) {
        m_report.AddProblem(bands, "a scan ends with band 63 at most");
    }
}

/// The compressed data, up to the next marker that is not one of restart.
std::uint64_t JpegInspector::ReadData(std::uint64_t at) {
    std::uint64_t const start = at;
    unsigned restarts = 0;
    std::array<unsigned char, 4096> block{};
    bool afterMark = false; // the byte before was FF
    while (at < m_source.Size()) {
        std::size_t const count = m_source.Read(at, block.data(), block.size());
        if (count == 0) {
            break; // the file became shorter
        }
        for (std::size_t i = 0; i < count; ++i, ++at) {
            unsigned const byte = block[i];
            if (afterMark && IsRestart(byte)) {
                CheckRestart(at - 1, restarts++ % 8);
            } else if (afterMark && byte != 0 && byte != 0xFF) {
                m_report.Add(start, at - 1 - start, "data",
                             Hexadecimal(m_source.Text(start, std::min(kShownBytes, at - 1 - start))));
                return at - 1;
            }
            afterMark = byte == 0xFF;
        }
    }
    m_report.Add(start, m_source.Size() - start, "data");
    return m_source.Size();
}

void JpegInspector::CheckRestart(std::uint64_t at, unsigned number) {
    unsigned const found = m_source.Byte(at + 1) - kRestart0;
    if (m_restartEvery == 0 || found != number) {
        m_report.AddProblem(at, "marker RST" + std::to_string(found) +
                                    (m_restartEvery == 0 ? " without a restart interval"
                                                         : " instead of RST" + std::to_string(number)));
    }
}

} // namespace vfinspect
