#include "tools/vfinspect/XmlScanner.h"

#include "foundation/persistence/IXMLFileIO.h"
#include "tools/vfinspect/Text.h"

#include <algorithm>
#include <strings.h>

namespace vfinspect {

namespace {

using VFoundation::IXMLFileIO;
using namespace std::string_view_literals;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kMarks[] = {kByteOrderMark, "\xEF\xBF\xBE", "\xEF\xBF\xBF"};
constexpr std::string_view kXmlBlanks = " \t\r\n";
constexpr std::string_view kLayout = " \t\n\v\f\r"; // a text of these only is dropped
constexpr std::string_view kDeclared[] = {"version", "encoding", "standalone"};
constexpr std::string_view kDeclaredCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
constexpr std::string_view kPublicId =
    " \r\nABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-'()+,./:=?;!*#@$_%";

bool StartsName(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) > 127;
}

bool ContinuesName(char c) {
    return StartsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.' || c == ':';
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && ::strncasecmp(a.data(), b.data(), a.size()) == 0;
}

bool StartsWithMark(std::string_view text) {
    return std::any_of(std::begin(kMarks), std::end(kMarks),
                       [&](auto mark) { return text.starts_with(mark); });
}

/// The character of a reference without '&' and ';'; 0 when there is none.
unsigned long CharacterOf(std::string_view reference) {
    constexpr std::pair<std::string_view, char> kNamed[] = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    for (auto const& [name, character] : kNamed) {
        if (reference == name) {
            return static_cast<unsigned char>(character);
        }
    }
    if (!reference.starts_with('#')) {
        return 0;
    }
    unsigned const base = reference.starts_with("#x"sv) ? 16 : 10;
    reference.remove_prefix(base == 16 ? 2 : 1);
    unsigned long character = 0;
    for (char const c : reference) {
        std::size_t const digit =
            "0123456789abcdef"sv.find(c >= 'A' && c <= 'F' ? static_cast<char>(c | 0x20) : c);
        if (digit >= base) {
            return 0;
        }
        character = std::min(character * base + digit, 0x110000UL);
    }
    bool const isNone = character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF);
    return isNone ? 0 : character;
}

void AppendUtf8(std::string& to, unsigned long character) {
    if (character < 0x80) {
        to += static_cast<char>(character);
        return;
    }
    int const following = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    constexpr unsigned long kFirst[] = {0, 0xC0, 0xE0, 0xF0};
    to += static_cast<char>(kFirst[following] | character >> (6 * following));
    for (int i = following - 1; i >= 0; --i) {
        to += static_cast<char>(0x80 | (character >> (6 * i) & 0x3F));
    }
}

/// Where the bytes stop being UTF-8 as the library checks it, by first bytes and continuations; npos when nowhere.
std::size_t FindNotUtf8(std::string_view text) {
    std::size_t at = 0;
    while (at < text.size()) {
        auto const first = static_cast<unsigned char>(text[at]);
        std::size_t const length = first < 0x80   ? 1
                                   : first < 0xC2 ? 0
                                   : first < 0xE0 ? 2
                                   : first < 0xF0 ? 3
                                                  : 4;
        if (length == 0 || first > 0xF4 || text.size() - at < length) {
            return at;
        }
        for (std::size_t i = 1; i < length; ++i) {
            if ((static_cast<unsigned char>(text[at + i]) & 0xC0) != 0x80) {
                return at;
            }
        }
        at += length;
    }
    return std::string_view::npos;
}

} // namespace

std::string DecodeReferences(std::string_view text) {
    std::string decoded;
    while (!text.empty()) {
        std::size_t const start = text.find('&');
        decoded += text.substr(0, start);
        if (start == std::string_view::npos) {
            break;
        }
        text.remove_prefix(start + 1);
        std::size_t const end = text.find(';');
        if (end == std::string_view::npos) {
            break; // cut
        }
        AppendUtf8(decoded, CharacterOf(text.substr(0, end)));
        text.remove_prefix(end + 1);
    }
    return decoded;
}

bool XmlScanner::MayBeXml(std::string_view start) {
    start.remove_prefix(start.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
    start.remove_prefix(std::min(start.find_first_not_of(kXmlBlanks), start.size()));
    return start.starts_with('<');
}

bool XmlScanner::Fail(std::size_t offset, std::string reason) {
    if (m_fault.empty()) {
        m_faultOffset = offset;
        m_fault = std::move(reason);
    }
    return false;
}

bool XmlScanner::Skip(std::string_view expected) noexcept {
    bool const found = Rest().starts_with(expected);
    m_at += found ? expected.size() : 0;
    return found;
}

bool XmlScanner::SkipBlanks() noexcept {
    std::size_t const before = m_at;
    m_at = std::min(m_text.find_first_not_of(kXmlBlanks, m_at), m_text.size());
    return m_at > before;
}

bool XmlScanner::SkipAfter(std::string_view end) noexcept {
    std::size_t const found = m_text.find(end, m_at);
    m_at = found == std::string_view::npos ? m_at : found + end.size();
    return found != std::string_view::npos;
}

bool XmlScanner::TakeName(std::string_view& name) {
    std::size_t const start = m_at;
    if (!StartsName(Next())) {
        return Fail(start, "a name should be here");
    }
    if (StartsWithMark(Rest()) && m_markedName == 0) {
        m_markedName = start + 1;
    }
    while (m_at < m_text.size() && ContinuesName(m_text[m_at])) {
        ++m_at;
    }
    name = m_text.substr(start, m_at - start);
    return true;
}

bool XmlScanner::TakeQuoted(std::string_view& value) {
    char const quote = Next();
    if (quote != '"' && quote != '\'') {
        return Fail(m_at, "a text in quotes should be here");
    }
    std::size_t const start = m_at + 1;
    std::size_t const end = m_text.find(quote, start);
    if (end == std::string_view::npos) {
        return Fail(m_at, "the quote is not closed");
    }
    value = m_text.substr(start, end - start);
    m_at = end + 1;
    return true;
}

bool XmlScanner::Scan() {
    if (m_text.size() > IXMLFileIO::kMaxTextSize) {
        return Fail(IXMLFileIO::kMaxTextSize, "a document has 256 MiB at most");
    }
    m_hasMark = Skip(kByteOrderMark);
    m_start = m_at;
    if (!ScanNodes()) {
        return false;
    }
    if (!m_open.empty()) {
        return Fail(m_open.back().offset, "element " + Quoted(m_open.back().name, 40) + " is not closed");
    }
    if (!m_hadRoot) {
        return Fail(m_text.size(), "there is no root element");
    }
    return CheckEncoding();
}

bool XmlScanner::ScanNodes() {
    while (m_at < m_text.size()) {
        if (Next() == '<' ? !ScanMarkup() : !ScanText()) {
            return false;
        }
    }
    return true;
}

bool XmlScanner::ScanText() {
    std::size_t const offset = m_at;
    std::string_view const text = Rest().substr(0, Rest().find('<'));
    m_at += text.size();
    if (std::size_t const nul = text.find('\0'); nul != std::string_view::npos) {
        return Fail(offset + nul, "a zero byte");
    }
    if (m_open.empty()) {
        std::size_t const found = text.find_first_not_of(kXmlBlanks);
        return found == std::string_view::npos || Fail(offset + found, "text outside the root element");
    }
    if (std::size_t const end = text.find("]]>"sv); end != std::string_view::npos) {
        return Fail(offset + end, "\"]]>\" in a text");
    }
    if (text.find_first_not_of(kLayout) == std::string_view::npos) {
        return true;
    }
    m_handler.OnText(offset, text, false);
    return ScanReferences(text, offset);
}

bool XmlScanner::ScanMarkup() {
    std::size_t const offset = m_at;
    if (Skip("<!--"sv)) {
        return ScanComment();
    }
    if (Skip("<![CDATA["sv)) {
        std::size_t const start = m_at;
        if (m_open.empty() || !SkipAfter("]]>"sv)) {
            return Fail(offset,
                        m_open.empty() ? "text outside the root element" : "the CDATA section is not closed");
        }
        std::string_view const text = m_text.substr(start, m_at - 3 - start);
        m_handler.OnText(start, text, true);
        std::size_t const nul = text.find('\0');
        return nul == std::string_view::npos || Fail(start + nul, "a zero byte");
    }
    if (Skip("<?"sv)) {
        return ScanInstruction();
    }
    if (Skip("<!DOCTYPE"sv)) {
        return ScanDocumentType();
    }
    if (Skip("</"sv)) {
        return ScanEndTag();
    }
    return Skip("<"sv) && ScanStartTag();
}

bool XmlScanner::ScanComment() {
    std::size_t const offset = m_at - 4;
    if (!SkipAfter("--"sv)) {
        return Fail(offset, "the comment is not closed");
    }
    if (!Skip(">"sv)) {
        return Fail(m_at - 2, "\"--\" in a comment");
    }
    m_handler.OnOther(offset, m_at - offset, "comment");
    std::size_t const nul = m_text.substr(offset, m_at - offset).find('\0');
    return nul == std::string_view::npos || Fail(offset + nul, "a zero byte");
}

bool XmlScanner::ScanInstruction() {
    std::size_t const start = m_at;
    std::size_t const end = m_text.find('>', start);
    if (end == std::string_view::npos || end == start || m_text[end - 1] != '?') {
        return Fail(start - 2, "the instruction does not end with \"?>\"");
    }
    std::string_view target;
    if (!TakeName(target)) {
        return false;
    }
    bool const isXml = EqualIgnoringCase(target.substr(0, 3), "xml"sv);
    if (isXml ? !ScanXmlInstruction(start - 2, end - 1, target) : m_at != end - 1 && !SkipBlanks()) {
        return Fail(m_at, "an instruction is not written like this");
    }
    m_at = end + 1;
    m_handler.OnOther(start - 2, m_at - start + 2, "instruction");
    std::size_t const nul = m_text.substr(start, m_at - start).find('\0');
    return nul == std::string_view::npos || Fail(start + nul, "a zero byte");
}

/// The declaration, or an instruction like "xml-stylesheet"; both have attributes. `end` is that of its content.
bool XmlScanner::ScanXmlInstruction(std::size_t start, std::size_t end, std::string_view target) {
    bool const isDeclaration = target.size() == 3;
    if (isDeclaration && (target != "xml"sv || start != m_start)) {
        return Fail(start, "a declaration stands at the very start, as \"<?xml\"");
    }
    std::string_view const whole = m_text;
    m_text = m_text.substr(0, end); // nothing of the instruction reaches past it
    auto const* next = std::begin(kDeclared);
    bool isFine = true;
    while (isFine && SkipBlanks() && m_at < end) {
        XmlAttribute attribute{};
        isFine = ScanAttribute(attribute);
        if (isFine && isDeclaration) {
            auto const* const found = std::find(next, std::end(kDeclared), attribute.name);
            bool const isExpected =
                next == std::begin(kDeclared) ? found == next : found != std::end(kDeclared);
            bool const isValue =
                !attribute.value.empty() &&
                attribute.value.find_first_not_of(kDeclaredCharacters) == std::string_view::npos &&
                (attribute.name != "standalone"sv || attribute.value == "yes"sv || attribute.value == "no"sv);
            isFine = (isExpected && isValue) ||
                     Fail(attribute.offset,
                          "a declaration has a version, an encoding and standalone, in this order");
            m_encoding = isFine && attribute.name == "encoding"sv ? attribute.value : m_encoding;
            next = isFine ? found + 1 : next;
        }
    }
    m_text = whole;
    m_hasDeclaration = m_hasDeclaration || isDeclaration;
    if (isFine && isDeclaration && next == std::begin(kDeclared)) {
        return Fail(start, "a declaration without a version");
    }
    return isFine && (m_at == end || Fail(m_at, "an attribute should be here"));
}

bool XmlScanner::ScanDocumentType() {
    std::size_t const offset = m_at - 9;
    std::size_t const end = m_text.find('>', m_at);
    if (!m_open.empty() || m_hadRoot || m_hasDocumentType || end == std::string_view::npos) {
        return Fail(offset, end == std::string_view::npos ? "the document type is not closed"
                                                          : "a document type stands once, before the root");
    }
    m_hasDocumentType = true;
    std::string_view const whole = m_text;
    m_text = m_text.substr(0, end);
    std::string_view name;
    bool const isFine =
        (SkipBlanks() || Fail(m_at, "a blank should be here")) && TakeName(name) && ScanExternalId(end);
    m_text = whole;
    m_at = end + 1;
    m_handler.OnOther(offset, m_at - offset, "document type");
    std::size_t const nul = m_text.substr(offset, m_at - offset).find('\0');
    return isFine && (nul == std::string_view::npos || Fail(offset + nul, "a zero byte"));
}

bool XmlScanner::ScanExternalId(std::size_t end) {
    bool const isSeparated = SkipBlanks();
    if (m_at == end) {
        return true;
    }
    std::size_t const start = m_at;
    bool const isPublic = Skip("PUBLIC"sv);
    if (!isSeparated || (!isPublic && !Skip("SYSTEM"sv)) || !SkipBlanks()) {
        return Fail(start, "a document type has a name and at most SYSTEM or PUBLIC with an address");
    }
    std::string_view literal;
    std::size_t const literalAt = m_at;
    if (!TakeQuoted(literal)) {
        return false;
    }
    if (isPublic) {
        if (literal.find_first_not_of(kPublicId) != std::string_view::npos) {
            return Fail(literalAt, "a character that a public name does not have");
        }
        if (!SkipBlanks()) {
            return Fail(m_at, "a blank and an address should be here");
        }
        if (!TakeQuoted(literal)) {
            return false;
        }
    }
    SkipBlanks();
    return m_at == end || Fail(m_at, "the document type should end here");
}

bool XmlScanner::ScanStartTag() {
    std::size_t const offset = m_at - 1;
    if (m_open.empty() && m_hadRoot) {
        return Fail(offset, "a second root element");
    }
    if (m_open.size() >= static_cast<std::size_t>(IXMLFileIO::kMaxNesting)) {
        return Fail(offset, "elements nest 1000 deep at most");
    }
    std::string_view name;
    if (!TakeName(name)) {
        return false;
    }
    m_hadRoot = true;
    m_attributes.clear();
    for (;;) {
        bool const isSeparated = SkipBlanks();
        bool const isEmpty = Skip("/>"sv);
        if (isEmpty || Skip(">"sv)) {
            if (!CheckTwice()) {
                return false;
            }
            m_handler.OnStart(offset, name, m_attributes);
            isEmpty ? m_handler.OnEnd(m_at) : m_open.push_back({name, offset});
            return true;
        }
        if (m_at == m_text.size()) {
            return Fail(offset, "the tag of element " + Quoted(name, 40) + " is not closed");
        }
        if (!isSeparated) {
            return Fail(m_at, "a blank or the end of the tag should be here");
        }
        if (m_attributes.size() >= static_cast<std::size_t>(IXMLFileIO::kMaxAttributes)) {
            return Fail(m_at, "an element has 1000 attributes at most");
        }
        XmlAttribute attribute{};
        if (!ScanAttribute(attribute)) {
            return false;
        }
        m_attributes.push_back(attribute);
    }
}

bool XmlScanner::ScanAttribute(XmlAttribute& attribute) {
    attribute.offset = m_at;
    if (!TakeName(attribute.name)) {
        return false;
    }
    SkipBlanks();
    if (!Skip("="sv)) {
        return Fail(m_at, "a \"=\" should be here");
    }
    SkipBlanks();
    if (!TakeQuoted(attribute.value)) {
        return false;
    }
    std::size_t const start = m_at - 1 - attribute.value.size();
    std::size_t const bad = attribute.value.find_first_of("<\0"sv);
    if (bad != std::string_view::npos) {
        return Fail(start + bad, attribute.value[bad] == '<' ? "a \"<\" in an attribute" : "a zero byte");
    }
    return ScanReferences(attribute.value, start);
}

bool XmlScanner::CheckTwice() {
    if (m_attributes.size() < 2) {
        return true;
    }
    m_sorted.clear();
    for (XmlAttribute const& attribute : m_attributes) {
        m_sorted.push_back(&attribute);
    }
    std::stable_sort(m_sorted.begin(), m_sorted.end(),
                     [](auto const* a, auto const* b) { return a->name < b->name; });
    auto const found = std::adjacent_find(m_sorted.begin(), m_sorted.end(),
                                          [](auto const* a, auto const* b) { return a->name == b->name; });
    return found == m_sorted.end() ||
           Fail((*(found + 1))->offset, "attribute " + Quoted((*found)->name, 40) + " stands twice");
}

bool XmlScanner::ScanEndTag() {
    std::size_t const offset = m_at - 2;
    std::string_view name;
    if (!TakeName(name)) {
        return false;
    }
    if (m_open.empty() || m_open.back().name != name) {
        return Fail(offset, "the end of element " + Quoted(name, 40) + ", " +
                                (m_open.empty() ? "which is not open"
                                                : "but " + Quoted(m_open.back().name, 40) + " is open"));
    }
    SkipBlanks();
    if (!Skip(">"sv)) {
        return Fail(m_at, "a \">\" should be here");
    }
    m_open.pop_back();
    m_handler.OnEnd(m_at);
    return true;
}

bool XmlScanner::ScanReferences(std::string_view text, std::size_t offset) {
    for (std::size_t start = text.find('&'); start != std::string_view::npos;
         start = text.find('&', start + 1)) {
        std::size_t const end = text.find(';', start);
        unsigned long const character =
            end == std::string_view::npos ? 0 : CharacterOf(text.substr(start + 1, end - start - 1));
        if (character == 0) {
            return Fail(offset + start, "a \"&\" that begins no known reference");
        }
        if (character > 0xFF && m_wideReference == 0) {
            m_wideReference = offset + start + 1;
        }
    }
    return true;
}

/// References above 255 need a document of UTF-8, in which no name begins with a mark.
bool XmlScanner::CheckEncoding() {
    bool const isDeclaredUtf8 = m_encoding.empty() || EqualIgnoringCase(m_encoding, "UTF-8"sv) ||
                                EqualIgnoringCase(m_encoding, "UTF8"sv);
    bool const meansUtf8 = m_hasMark || (m_hasDeclaration ? isDeclaredUtf8 : m_wideReference != 0);
    bool const isUtf8 = meansUtf8 && FindNotUtf8(m_text.substr(m_start)) == std::string_view::npos;
    if (m_wideReference != 0 && !isUtf8) {
        return Fail(m_wideReference - 1, "a reference above 255 in a document that is not UTF-8");
    }
    return !isUtf8 || m_markedName == 0 || Fail(m_markedName - 1, "a name begins with a byte order mark");
}

} // namespace vfinspect
