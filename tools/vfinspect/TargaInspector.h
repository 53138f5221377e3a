#pragma once

#include "tools/vfinspect/ByteSource.h"
#include "tools/vfinspect/Report.h"

namespace vfinspect {

/// A Targa picture of version 2: header, ID, colour map, pixels, footer. Damaged is what the library does not load, or
/// loads as something else than the file says.
class TargaInspector {
  public:
    TargaInspector(ByteSource& source, Report& report) : m_source(source), m_report(report) {}

    static bool IsTarga(ByteSource& source);
    void Inspect();

  private:
    std::uint64_t Field(std::uint64_t offset, unsigned bytes, char const* label);
    void AddPixels(std::uint64_t start, std::uint64_t needed);

    ByteSource& m_source;
    Report& m_report;
};

} // namespace vfinspect
