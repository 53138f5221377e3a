#pragma once

#include "tools/vfinspect/ByteSource.h"
#include "tools/vfinspect/Report.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace vfinspect {

/// A PNG picture: the signature and the chunks, with their checksums and their order. The compressed pixels are not
/// decoded; their checksums tell of damage.
class PngInspector {
  public:
    static constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";

    PngInspector(ByteSource& source, Report& report) : m_source(source), m_report(report) {}

    static bool IsPng(ByteSource& source) { return source.Text(0, kSignature.size()) == kSignature; }
    void Inspect();

  private:
    struct Chunk {
        std::string type;
        std::uint64_t offset; // of the length
        std::uint64_t body;
        std::uint64_t length; // of the body
    };

    std::uint64_t ReadChunk(std::uint64_t at);
    void CheckPlace(Chunk const& chunk);
    void ReadBody(Chunk const& chunk);
    void ReadHeader(Chunk const& chunk);
    std::uint64_t Field(std::uint64_t offset, unsigned bytes, char const* label);

    ByteSource& m_source;
    Report& m_report;
    std::string m_previous; // the type of the chunk before
    bool m_hasPalette = false;
    bool m_hasPixels = false;
    bool m_needsPalette = false;
};

} // namespace vfinspect
