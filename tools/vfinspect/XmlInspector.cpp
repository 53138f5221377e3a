#include "tools/vfinspect/XmlInspector.h"

#include "foundation/persistence/IXMLFileIO.h"
#include "tools/vfinspect/Text.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace vfinspect {

namespace {

using VFoundation::IXMLFileIO;

constexpr std::size_t kShownAttributes = 160;
constexpr std::size_t kShownText = 80;

enum class Type { kInteger, kLongInteger, kNumber, kBits };

constexpr struct {
    std::string_view className;
    std::string_view attribute;
    Type type;
} kTypes[] = {
    {"VObjectArray", "count", Type::kInteger},
    {"VDictionary", "count", Type::kInteger},
    {"VDictionary", "version", Type::kInteger},
    {"VColour", "red", Type::kInteger},
    {"VColour", "green", Type::kInteger},
    {"VColour", "blue", Type::kInteger},
    {"VColour", "alpha", Type::kInteger},
    {"VPoint", "x", Type::kInteger},
    {"VPoint", "y", Type::kInteger},
    {"VSize", "width", Type::kInteger},
    {"VSize", "height", Type::kInteger},
    {"VRect", "left", Type::kInteger},
    {"VRect", "top", Type::kInteger},
    {"VRect", "right", Type::kInteger},
    {"VRect", "bottom", Type::kInteger},
    {"VRange", "location", Type::kInteger},
    {"VRange", "length", Type::kInteger},
    {"VTimeRange", "start", Type::kNumber},
    {"VTimeRange", "duration", Type::kNumber},
    {"VDate", "seconds", Type::kLongInteger},
    {"VPDFConnection", "connection_page", Type::kInteger},
    {"VBitString", "bits", Type::kBits},
    {"VGraphEdge", "srcNode_ID", Type::kInteger},
    {"VGraphEdge", "dstNode_ID", Type::kInteger},
};

template <class T>
bool IsWholeNumber(std::string const& text) {
    std::size_t const start = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    char const* first = text.data() + start;
    first += *first == '+' && first[1] != '-' ? 1 : 0;
    T number{};
    auto const [end, error] = std::from_chars(first, text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

bool IsOfType(std::string const& text, Type type) {
    switch (type) {
    case Type::kInteger:
        return IsWholeNumber<std::int32_t>(text);
    case Type::kLongInteger:
        return IsWholeNumber<std::int64_t>(text);
    case Type::kNumber:
        return IsWholeNumber<double>(text);
    case Type::kBits:
        return text.find_first_not_of("01") == std::string::npos;
    }
    return true;
}

char const* NameOf(Type type) {
    return type == Type::kNumber    ? "a number"
           : type == Type::kBits    ? "a text of 0 and 1"
           : type == Type::kInteger ? "an integer of 32 bits"
                                    : "an integer of 64 bits";
}

/// As it is in the file, for the sake of offsets. The library makes CR LF an LF, which changes no verdict.
std::string ReadText(ByteSource& source) {
    return source.Text(0, IXMLFileIO::kMaxTextSize + 1);
}

} // namespace

XmlInspector::XmlInspector(ByteSource& source, Report& report) : m_report(report), m_text(ReadText(source)) {
}

void XmlInspector::Inspect() {
    XmlScanner scanner(m_text, *this);
    if (!scanner.Scan()) {
        m_report.AddProblem(scanner.FaultOffset(), scanner.Fault());
        while (!m_open.empty()) {
            m_open.pop_back();
            m_report.Close(std::min<std::size_t>(scanner.FaultOffset(), m_text.size()));
        }
    }
}

void XmlInspector::OnStart(std::size_t offset, std::string_view name,
                           std::vector<XmlAttribute> const& attributes) {
    Element element{name, offset, 0, {}, {}, 0};
    std::string shown;
    for (XmlAttribute const& attribute : attributes) {
        if (shown.size() < kShownAttributes) {
            shown.append(shown.empty() ? "" : " ").append(Printable(attribute.name, 40)).append("=");
            shown += Quoted(DecodeReferences(attribute.value.substr(0, kShownAttributes)), kShownText);
        }
        if (attribute.name == "class") {
            element.className = attribute.value;
        } else if (attribute.name == "count") {
            element.count = attribute.value;
            element.countOffset = attribute.offset;
        } else if (attribute.name == "version") {
            element.version = attribute.value;
        }
    }
    if (!m_open.empty()) {
        ++m_open.back().children;
    }
    m_hasGraph = m_hasGraph || element.className == "VGraph";
    m_report.Open(offset, '<' + Printable(name, 60) + '>', shown);
    for (XmlAttribute const& attribute : attributes) {
        CheckAttribute(element.className, attribute);
    }
    m_open.push_back(element);
}

void XmlInspector::CheckAttribute(std::string_view className, XmlAttribute const& attribute) {
    for (auto const& row : kTypes) {
        if (row.className == className && row.attribute == attribute.name && !attribute.value.empty()) {
            std::string const value = DecodeReferences(attribute.value);
            if (!IsOfType(value, row.type)) {
                m_report.AddProblem(attribute.offset, std::string(row.attribute) + " of " +
                                                          std::string(className) + " is " +
                                                          Quoted(value, 40) + ", not " + NameOf(row.type));
            }
        }
    }
}

void XmlInspector::OnEnd(std::size_t end) {
    Element const element = m_open.back();
    m_open.pop_back();
    CheckCount(element);
    m_report.Close(end);
}

/// An array counts nulls, which have no element; a dictionary counts its pairs.
void XmlInspector::CheckCount(Element const& element) {
    bool const isDictionary = element.className == "VDictionary" && element.version == "2";
    if ((!isDictionary && element.className != "VObjectArray") || element.count.empty()) {
        return;
    }
    std::int64_t count = 0;
    std::from_chars(element.count.data(), element.count.data() + element.count.size(), count);
    if (isDictionary ? count != element.children : count < element.children) {
        m_report.AddProblem(element.countOffset, "the count is " + std::to_string(count) + ", " +
                                                     std::string(element.className) + " has " +
                                                     std::to_string(element.children) +
                                                     (element.children == 1 ? " object" : " objects"));
    }
}

void XmlInspector::OnText(std::size_t offset, std::string_view text, bool isCData) {
    std::string_view const start = text.substr(0, 4 * kShownText);
    m_report.Add(offset, text.size(), isCData ? "CDATA" : "text",
                 Quoted(isCData ? std::string(start) : DecodeReferences(start), kShownText));
}

void XmlInspector::OnOther(std::size_t offset, std::size_t length, char const* what) {
    m_report.Add(
        offset, length, what,
        Quoted(std::string_view(m_text).substr(offset, std::min(length, 2 * kShownText)), kShownText));
}

} // namespace vfinspect
