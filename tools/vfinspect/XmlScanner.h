#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vfinspect {

struct XmlAttribute {
    std::string_view name;
    std::string_view value; // as the document has it
    std::size_t offset;     // of the name
};

/// What `XmlScanner` tells while it reads. The texts are borrowed from the document.
class XmlHandler {
  public:
    virtual ~XmlHandler() = default;
    virtual void OnStart(std::size_t offset, std::string_view name,
                         std::vector<XmlAttribute> const& attributes) = 0;
    virtual void OnEnd(std::size_t end) = 0;
    /// A text that is not layout; `isCData` without references.
    virtual void OnText(std::size_t offset, std::string_view text, bool isCData) = 0;
    /// A comment, an instruction or the document type.
    virtual void OnOther(std::size_t offset, std::size_t length, char const* what) = 0;
};

/// `text` with its references replaced by the characters, in UTF-8.
std::string DecodeReferences(std::string_view text);

/// Reads a document by the rules of docs/formats/object-xml.md, with the same verdict as the library's reader, and knows
/// where and why a document is refused. The library's own check (`PrepareXMLText`) keeps neither reasons nor a structure,
/// as those would slow loading; InspectorVerdictTest compares the verdicts of both.
class XmlScanner {
  public:
    XmlScanner(std::string_view text, XmlHandler& handler) : m_text(text), m_handler(handler) {}

    /// Whether it looks like a document: blanks or a byte order mark, then '<'.
    static bool MayBeXml(std::string_view start);

    /// False at the first fault.
    bool Scan();
    std::size_t FaultOffset() const noexcept { return m_faultOffset; }
    std::string const& Fault() const noexcept { return m_fault; }

  private:
    struct OpenElement {
        std::string_view name;
        std::size_t offset;
    };

    bool Fail(std::size_t offset, std::string reason);
    std::string_view Rest() const noexcept { return m_text.substr(m_at); }
    char Next() const noexcept { return m_at < m_text.size() ? m_text[m_at] : '\0'; }
    bool Skip(std::string_view expected) noexcept;
    bool SkipBlanks() noexcept;
    bool SkipAfter(std::string_view end) noexcept;
    bool TakeName(std::string_view& name);
    bool TakeQuoted(std::string_view& value);

    bool ScanNodes();
    bool ScanText();
    bool ScanMarkup();
    bool ScanComment();
    bool ScanInstruction();
    bool ScanXmlInstruction(std::size_t start, std::size_t end, std::string_view target);
    bool ScanDocumentType();
    bool ScanExternalId(std::size_t end);
    bool ScanStartTag();
    bool ScanEndTag();
    bool ScanAttribute(XmlAttribute& attribute);
    bool ScanReferences(std::string_view text, std::size_t offset);
    bool CheckTwice();
    bool CheckEncoding();

    std::string_view m_text;
    XmlHandler& m_handler;
    std::size_t m_at = 0;
    std::size_t m_faultOffset = 0;
    std::string m_fault;
    std::vector<OpenElement> m_open;
    std::vector<XmlAttribute> m_attributes;
    std::vector<XmlAttribute const*> m_sorted;
    bool m_hadRoot = false;
    bool m_hasMark = false;
    bool m_hasDeclaration = false;
    bool m_hasDocumentType = false;
    std::string_view m_encoding;
    std::size_t m_start = 0;         // after a byte order mark
    std::size_t m_wideReference = 0; // where one above 255 is, plus 1
    std::size_t m_markedName = 0;    // where a name begins with a mark, plus 1
};

} // namespace vfinspect
