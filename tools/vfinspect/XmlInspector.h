#pragma once

#include "tools/vfinspect/ByteSource.h"
#include "tools/vfinspect/Report.h"
#include "tools/vfinspect/XmlScanner.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vfinspect {

/// A document of object XML: its elements and texts, and whether what the objects of known classes say can be true.
/// The text is held in memory; it has as many bytes as the library reads at most.
class XmlInspector final : private XmlHandler {
  public:
    XmlInspector(ByteSource& source, Report& report);

    void Inspect();

    /// Whether a graph stands in the document.
    bool HasGraph() const noexcept { return m_hasGraph; }
    std::string_view Text() const noexcept { return m_text; }

  private:
    struct Element {
        std::string_view className;
        std::size_t offset;
        std::size_t countOffset; // of the attribute "count"
        std::string_view count;  // its value, null without one
        std::string_view version;
        std::int64_t children; // elements so far
    };

    void OnStart(std::size_t offset, std::string_view name,
                 std::vector<XmlAttribute> const& attributes) override;
    void OnEnd(std::size_t end) override;
    void OnText(std::size_t offset, std::string_view text, bool isCData) override;
    void OnOther(std::size_t offset, std::size_t length, char const* what) override;

    void CheckAttribute(std::string_view className, XmlAttribute const& attribute);
    void CheckCount(Element const& element);

    Report& m_report;
    std::string m_text;
    std::vector<Element> m_open;
    bool m_hasGraph = false;
};

} // namespace vfinspect
