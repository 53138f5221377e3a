#pragma once

#include "tools/vfinspect/ByteSource.h"
#include "tools/vfinspect/Report.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vfinspect {

/// A JPEG picture: its markers and what their segments say, and the extent of the compressed data, which is not
/// decoded.
class JpegInspector {
  public:
    static constexpr std::string_view kStart = "\xFF\xD8";

    JpegInspector(ByteSource& source, Report& report) : m_source(source), m_report(report) {}

    static bool IsJpeg(ByteSource& source) { return source.Text(0, 2) == kStart; }
    void Inspect();

  private:
    struct Segment {
        unsigned marker;
        std::uint64_t offset; // of the marker
        std::uint64_t body;   // after the length
        std::uint64_t end;
    };

    std::uint64_t ReadMarker(std::uint64_t at);
    std::uint64_t ReadSegment(std::uint64_t at, unsigned marker);
    void ReadBody(Segment const& segment);
    void ReadFrame(Segment const& segment);
    void ReadQuantisation(Segment const& segment);
    void ReadHuffman(Segment const& segment);
    void ReadScan(Segment const& segment);
    std::uint64_t ReadData(std::uint64_t at);
    void CheckRestart(std::uint64_t at, unsigned number);
    void AddFault(Segment const& segment, std::string reason) {
        m_report.AddProblem(segment.offset, std::move(reason));
    }

    ByteSource& m_source;
    Report& m_report;
    bool m_hasEnded = false;
    bool m_hasScan = false;
    bool m_isArithmetic = false;
    int m_scans = 0;
    std::string m_components;     // ids of the frame
    unsigned m_quantisations = 0; // a bit for each table that was defined
    unsigned m_huffmanTables = 0; // the same, those for AC in the upper four bits
    std::uint64_t m_restartEvery = 0;
    std::string m_quantisationOf; // the tables that the components use
};

} // namespace vfinspect
