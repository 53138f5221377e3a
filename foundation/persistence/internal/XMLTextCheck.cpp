#include "foundation/persistence/internal/XMLTextCheck.h"

#include "foundation/persistence/IXMLFileIO.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <strings.h>
#include <utility>
#include <vector>

namespace VFoundation {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kCDataStart = "<![CDATA[";
constexpr std::string_view kCDataEnd = "]]>";
constexpr unsigned long kLargestAscii = 0x7F;
constexpr unsigned long kLargestByte = 0xFF;
constexpr unsigned long kLargestCharacter = 0x10FFFF;

/// What TinyXML also passes over in UTF-8: a byte order mark, U+FFFE and U+FFFF.
constexpr std::string_view kMarks[] = {kByteOrderMark, "\xEF\xBF\xBE", "\xEF\xBF\xBF"};
constexpr std::size_t kMarkSize = 3;
constexpr std::string_view kDeclared[] = {"version", "encoding", "standalone"};
constexpr std::string_view kDeclaredValue =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789._-";
constexpr std::string_view kPublicId =
    " \r\nABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-'()+,./:=?;!*#@$_%";

bool StartsWithMark(std::string_view text) noexcept {
    return std::any_of(std::begin(kMarks), std::end(kMarks),
                       [text](std::string_view mark) { return text.starts_with(mark); });
}

constexpr bool IsBlank(char c) noexcept {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// What TinyXML passes over as white space.
constexpr bool IsTinyXMLBlank(char c) noexcept {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// How many bytes at the start of `text` are such.
template <class Such>
std::size_t CountOf(Such isSuch, std::string_view text) noexcept {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isSuch) - text.begin());
}

constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

constexpr bool StartsName(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
           static_cast<unsigned char>(c) > 127;
}

constexpr auto kContinuesName = [] {
    std::array<bool, 256> table{};
    for (unsigned i = 0; i < table.size(); ++i) {
        char const c = static_cast<char>(i);
        table[i] = StartsName(c) || IsDigit(c) || c == '-' || c == '.' || c == ':';
    }
    return table;
}();

constexpr bool ContinuesName(char c) noexcept {
    return kContinuesName[static_cast<unsigned char>(c)];
}

bool EqualIgnoringCase(std::string_view a, std::string_view b) noexcept {
    return a.size() == b.size() && ::strncasecmp(a.data(), b.data(), a.size()) == 0;
}

/// The value of a digit in base 10 or 16, or the base for any other character.
constexpr unsigned DigitValue(char c, unsigned base) noexcept {
    if (IsDigit(c)) {
        return static_cast<unsigned>(c - '0');
    }
    char const lower = static_cast<char>(c | 0x20);
    return base == 16 && lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a') + 10 : base;
}

/// The character that a reference, given without '&' and ';', stands for; 0 for none.
unsigned long ReferredCharacter(std::string_view reference) noexcept {
    constexpr struct {
        std::string_view name;
        char character;
    } kNamed[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    if (!reference.starts_with('#')) {
        for (auto const& named : kNamed) {
            if (reference == named.name) {
                return static_cast<unsigned char>(named.character);
            }
        }
        return 0;
    }
    reference.remove_prefix(1);
    unsigned const base = reference.starts_with('x') ? 16 : 10;
    reference.remove_prefix(base == 16 ? 1 : 0);
    unsigned long character = 0;
    for (char const c : reference) {
        unsigned const digit = DigitValue(c, base);
        character = character * base + digit;
        if (digit == base || character > kLargestCharacter) {
            return 0;
        }
    }
    bool const isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    return isSurrogate ? 0 : character;
}

/// The number of bytes that follow the first one of a UTF-8 character; -1 when `first` cannot be the first.
constexpr int FollowingBytes(unsigned char first) noexcept {
    if (first < 0x80) {
        return 0;
    }
    if (first < 0xC2 || first > 0xF4) {
        return -1;
    }
    return first < 0xE0 ? 1 : first < 0xF0 ? 2 : 3;
}

bool IsUtf8(std::string_view text) noexcept {
    constexpr std::uint64_t kHighBits = 0x8080808080808080U;
    int missing = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::uint64_t next = 0;
        if (missing == 0 && text.size() - i >= sizeof next) {
            std::memcpy(&next, text.data() + i, sizeof next);
            if ((next & kHighBits) == 0) {
                i += sizeof next - 1;
                continue;
            }
        }
        auto const byte = static_cast<unsigned char>(text[i]);
        if (missing > 0) {
            if ((byte & 0xC0) != 0x80) {
                return false;
            }
            --missing;
        } else {
            missing = FollowingBytes(byte);
            if (missing < 0) {
                return false;
            }
        }
    }
    return missing == 0;
}

/// Reads a document from start to end. Every function is false when the text is not well-formed.
class Scanner {
  public:
    /// A part of the text, and what the back ends are to see instead.
    struct Replacement {
        std::size_t offset;
        std::size_t length;
        std::string bytes;
        bool isReference; // stands for `bytes` only in a text that is not UTF-8
    };

    explicit Scanner(std::string_view text) : m_text(text), m_rest(text) {}

    bool ScanDocument();

    std::string_view DeclaredEncoding() const noexcept { return m_encoding; }
    bool HasDeclaration() const noexcept { return m_hasDeclaration; }
    unsigned long LargestReference() const noexcept { return m_largestReference; }
    /// Whether a name begins with one of `kMarks`.
    bool HasMarkedName() const noexcept { return m_hasMarkedName; }
    /// In the order of their offsets.
    std::vector<Replacement> const& Replacements() const noexcept { return m_replacements; }
    /// See `XMLTextFacts`.
    std::vector<std::string>& Instructions() noexcept { return m_instructions; }
    std::vector<IXMLFileIO::Place>& Places() noexcept { return m_places; }
    /// Where the scan stopped.
    std::size_t Offset() const noexcept { return OffsetOf(m_rest); }

  private:
    std::size_t OffsetOf(std::string_view part) const noexcept {
        return static_cast<std::size_t>(part.data() - m_text.data());
    }
    bool Skip(std::string_view expected) noexcept;
    bool SkipBlanks() noexcept;
    bool SkipLiteral(std::string_view& literal) noexcept;
    bool SkipAfter(std::string_view end) noexcept;
    bool TakeName(std::string_view& name) noexcept;

    bool ScanText();
    bool ScanMarkup();
    bool ScanInstruction();
    bool ScanXMLInstruction(std::string_view target, bool isAtStart);
    bool ScanDocumentType();
    bool ScanExternalId();
    bool ScanStartTag();
    bool ScanEndTag();
    bool ScanAttribute(std::string_view& name, std::string_view& value);
    bool ScanReferences(std::string_view text);
    bool HasDistinctAttributes();
    void NoteBlankText(std::string_view text);
    void NotePlace(char const* tag);

    std::string_view const m_text;
    std::string_view m_rest;
    std::vector<std::string_view> m_open; // the names of the elements around
    bool m_hadRoot = false;
    bool m_hasDeclaration = false;
    bool m_hasDocumentType = false;
    bool m_hasMarkedName = false;
    std::string_view m_encoding;
    unsigned long m_largestReference = 0;
    std::vector<Replacement> m_replacements;
    std::vector<std::string> m_instructions;
    std::vector<std::string_view> m_attributes; // the names of the element's
    std::vector<IXMLFileIO::Place> m_places;    // of the start tags
    std::uint32_t m_line = 1;                   // that of the last one
    char const* m_lineStart = m_text.data();
};

bool Scanner::Skip(std::string_view expected) noexcept {
    bool const found = m_rest.starts_with(expected);
    m_rest.remove_prefix(found ? expected.size() : 0);
    return found;
}

/// True when there was at least one.
bool Scanner::SkipBlanks() noexcept {
    std::size_t const count = CountOf(IsBlank, m_rest);
    m_rest.remove_prefix(count);
    return count > 0;
}

/// A text in quotes of either kind.
bool Scanner::SkipLiteral(std::string_view& literal) noexcept {
    std::string_view const quote = m_rest.substr(0, 1);
    if (!Skip("\""sv) && !Skip("'"sv)) {
        return false;
    }
    literal = m_rest.substr(0, m_rest.find(quote));
    return SkipAfter(quote);
}

bool Scanner::SkipAfter(std::string_view end) noexcept {
    std::size_t const found = m_rest.find(end);
    if (found == std::string_view::npos) {
        return false;
    }
    m_rest.remove_prefix(found + end.size());
    return true;
}

bool Scanner::TakeName(std::string_view& name) noexcept {
    if (m_rest.empty() || !StartsName(m_rest.front())) {
        return false;
    }
    name = m_rest.substr(0, CountOf(ContinuesName, m_rest));
    m_hasMarkedName = m_hasMarkedName || StartsWithMark(name);
    m_rest.remove_prefix(name.size());
    return true;
}

bool Scanner::ScanDocument() {
    while (ScanText()) {
        if (m_rest.empty()) {
            return m_hadRoot && m_open.empty();
        }
        if (!ScanMarkup()) {
            return false;
        }
    }
    return false;
}

bool Scanner::ScanText() {
    std::string_view const text = m_rest.substr(0, m_rest.find('<'));
    m_rest.remove_prefix(text.size());
    if (m_open.empty()) {
        return CountOf(IsBlank, text) == text.size();
    }
    std::size_t const start = CountOf(IsTinyXMLBlank, text);
    if (start == text.size()) { // layout
        if (CountOf(IsBlank, text) < text.size()) {
            m_replacements.push_back({OffsetOf(text), text.size(), {}, false});
        }
        return true;
    }
    if (text[start] == '&' || StartsWithMark(text.substr(start))) {
        NoteBlankText(text);
    }
    return text.find(kCDataEnd) == std::string_view::npos && ScanReferences(text);
}

bool Scanner::ScanMarkup() {
    if (Skip("<!--"sv)) {
        return SkipAfter("--"sv) && Skip(">"sv);
    }
    if (Skip(kCDataStart)) {
        return !m_open.empty() && SkipAfter(kCDataEnd);
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

/// TinyXML ends an instruction at its first '>', and takes it for a declaration when its name begins with "xml".
bool Scanner::ScanInstruction() {
    bool const isAtStart = Offset() == 2;
    std::string_view content = m_rest.substr(0, m_rest.find('>'));
    if (!SkipAfter(">"sv) || !content.ends_with('?')) {
        return false;
    }
    std::string_view const after = m_rest;
    m_rest = content.substr(0, content.size() - 1);
    std::string_view target;
    if (!TakeName(target)) {
        return false;
    }
    if (EqualIgnoringCase(target.substr(0, 3), "xml"sv)) {
        if (!ScanXMLInstruction(target, isAtStart)) {
            return false;
        }
    } else {
        if (!m_rest.empty() && !SkipBlanks()) {
            return false;
        }
        m_instructions.emplace_back("?").append(content);
    }
    m_rest = after;
    return true;
}

/// The declaration, or an instruction like "xml-stylesheet", of which TinyXML expects attributes.
bool Scanner::ScanXMLInstruction(std::string_view target, bool isAtStart) {
    bool const isDeclaration = target.size() == 3;
    if (isDeclaration && (target != "xml"sv || !isAtStart)) {
        return false;
    }
    auto const* next = std::begin(kDeclared); // they come in this order
    while (SkipBlanks() && !m_rest.empty()) {
        std::string_view name;
        std::string_view value;
        if (!ScanAttribute(name, value)) {
            return false;
        }
        if (isDeclaration) {
            auto const* const found = std::find(next, std::end(kDeclared), name);
            bool const isExpected =
                next == std::begin(kDeclared) ? found == next : found != std::end(kDeclared);
            if (!isExpected || value.empty() ||
                value.find_first_not_of(kDeclaredValue) != std::string_view::npos) {
                return false;
            }
            if (name == "standalone"sv && value != "yes"sv && value != "no"sv) {
                return false;
            }
            m_encoding = name == "encoding"sv ? value : m_encoding;
            next = found + 1;
        }
    }
    m_hasDeclaration = m_hasDeclaration || isDeclaration;
    return m_rest.empty() && (!isDeclaration || next != std::begin(kDeclared));
}

/// TinyXML ends it at its first '>'.
bool Scanner::ScanDocumentType() {
    std::string_view const content = m_rest.substr(0, m_rest.find('>'));
    if (!m_open.empty() || m_hadRoot || std::exchange(m_hasDocumentType, true) || !SkipAfter(">"sv)) {
        return false;
    }
    std::string_view const after = std::exchange(m_rest, content);
    std::string_view name;
    bool const isFine = SkipBlanks() && TakeName(name) && ScanExternalId();
    m_rest = after;
    return isFine;
}

/// The rest of a document type: nothing, or where to find its declarations.
bool Scanner::ScanExternalId() {
    bool const isSeparated = SkipBlanks();
    if (m_rest.empty()) {
        return true;
    }
    bool const isPublic = Skip("PUBLIC"sv);
    std::string_view literal;
    if (!isSeparated || (!isPublic && !Skip("SYSTEM"sv)) || !SkipBlanks() || !SkipLiteral(literal)) {
        return false;
    }
    if (isPublic && (literal.find_first_not_of(kPublicId) != std::string_view::npos || !SkipBlanks() ||
                     !SkipLiteral(literal))) {
        return false;
    }
    SkipBlanks();
    return m_rest.empty();
}

/// Of the '<' of a start tag, which comes after all that were noted.
void Scanner::NotePlace(char const* tag) {
    char const* from = m_places.empty() ? m_lineStart : m_lineStart + m_places.back().column - 1;
    while (auto const* const end =
               static_cast<char const*>(std::memchr(from, '\n', static_cast<std::size_t>(tag - from)))) {
        ++m_line;
        m_lineStart = end + 1;
        from = m_lineStart;
    }
    m_places.push_back({m_line, static_cast<std::uint32_t>(tag - m_lineStart) + 1});
}

bool Scanner::ScanStartTag() {
    char const* const start = m_rest.data() - 1;
    std::string_view tag;
    if ((m_open.empty() && m_hadRoot) || m_open.size() >= IXMLFileIO::kMaxNesting || !TakeName(tag)) {
        return false;
    }
    NotePlace(start);
    m_hadRoot = true;
    m_attributes.clear();
    while (true) {
        bool const separated = SkipBlanks();
        if (Skip("/>"sv)) {
            return HasDistinctAttributes();
        }
        if (Skip(">"sv)) {
            m_open.push_back(tag);
            return HasDistinctAttributes();
        }
        std::string_view name;
        std::string_view value;
        if (!separated || m_attributes.size() >= IXMLFileIO::kMaxAttributes || !ScanAttribute(name, value)) {
            return false;
        }
        m_attributes.push_back(name);
    }
}

bool Scanner::HasDistinctAttributes() {
    constexpr std::size_t kFew = 8; // these are compared faster than sorted
    auto const begin = m_attributes.begin();
    auto const end = m_attributes.end();
    if (m_attributes.size() > kFew) {
        std::sort(begin, end);
        return std::adjacent_find(begin, end) == end;
    }
    for (auto name = begin; name != end; ++name) {
        if (std::find(begin, name, *name) != name) {
            return false;
        }
    }
    return true;
}

bool Scanner::ScanEndTag() {
    std::string_view name;
    if (!TakeName(name) || m_open.empty() || name != m_open.back()) {
        return false;
    }
    m_open.pop_back();
    SkipBlanks();
    return Skip(">"sv);
}

bool Scanner::ScanAttribute(std::string_view& name, std::string_view& value) {
    if (!TakeName(name)) {
        return false;
    }
    SkipBlanks();
    if (!Skip("="sv)) {
        return false;
    }
    SkipBlanks();
    return SkipLiteral(value) && value.find('<') == std::string_view::npos && ScanReferences(value);
}

bool Scanner::ScanReferences(std::string_view text) {
    for (std::size_t start = text.find('&'); start != std::string_view::npos; start = text.find('&')) {
        text.remove_prefix(start + 1);
        std::size_t const end = text.find(';');
        unsigned long const character =
            end == std::string_view::npos ? 0 : ReferredCharacter(text.substr(0, end));
        if (character == 0) {
            return false;
        }
        if (character > kLargestAscii && character <= kLargestByte) {
            m_replacements.push_back(
                {OffsetOf(text) - 1, end + 2, std::string(1, static_cast<char>(character)), true});
        }
        m_largestReference = std::max(m_largestReference, character);
    }
    return true;
}

/// Remembers `text`, in which there is a reference or a mark, if it stands for nothing but blanks and marks.
void Scanner::NoteBlankText(std::string_view text) {
    Replacement found{OffsetOf(text), text.size(), std::string(kCDataStart), false};
    while (!text.empty()) {
        std::size_t length = 1;
        if (StartsWithMark(text)) {
            length = kMarkSize;
            found.bytes += text.substr(0, length);
        } else {
            char blank = text.front();
            if (blank == '&') {
                length = std::min(text.find(';'), text.size() - 1) + 1;
                unsigned long const referred = ReferredCharacter(text.substr(1, length - 2));
                blank = referred <= kLargestByte ? static_cast<char>(referred) : '\0';
            }
            if (!IsTinyXMLBlank(blank)) {
                return;
            }
            found.bytes += blank;
        }
        text.remove_prefix(length);
    }
    found.bytes += kCDataEnd;
    m_replacements.push_back(std::move(found));
}

std::string WithReplacements(std::string const& text, std::vector<Scanner::Replacement> const& replacements,
                             bool isUtf8) {
    std::string result;
    result.reserve(text.size());
    std::size_t copied = 0;
    for (auto const& part : replacements) {
        if (!part.isReference || !isUtf8) {
            result.append(text, copied, part.offset - copied).append(part.bytes);
            copied = part.offset + part.length;
        }
    }
    return result.append(text, copied);
}

} // namespace

bool NeedsXMLCData(std::string_view text, bool isAlone) noexcept {
    if (text.empty() || (isAlone && CountOf(IsTinyXMLBlank, text) < text.size())) {
        return false;
    }
    // A carriage return in a section would come back as a line feed.
    return text.find('\r') == std::string_view::npos && text.find(kCDataEnd) == std::string_view::npos;
}

bool IsXMLName(char const* name) noexcept {
    if (!name || !StartsName(*name)) {
        return false;
    }
    while (ContinuesName(*name)) {
        ++name;
    }
    return *name == '\0';
}

bool PrepareXMLText(std::string& text, XMLTextFacts& facts) {
    bool const hasMark = text.starts_with(kByteOrderMark);
    text.erase(0, hasMark ? kByteOrderMark.size() : 0);
    facts.errorOffset = text.find('\0');
    if (facts.errorOffset != std::string::npos) {
        return false;
    }
    Scanner scanner(text);
    if (!scanner.ScanDocument()) {
        facts.errorOffset = scanner.Offset();
        return false;
    }
    bool const needsUtf8 = scanner.LargestReference() > kLargestByte;
    std::string_view const encoding = scanner.DeclaredEncoding();
    bool const meansUtf8 =
        hasMark || (scanner.HasDeclaration() ? encoding.empty() || EqualIgnoringCase(encoding, "UTF-8"sv) ||
                                                   EqualIgnoringCase(encoding, "UTF8"sv)
                                             : needsUtf8);
    facts.isUtf8 = meansUtf8 && IsUtf8(text);
    if ((needsUtf8 && !facts.isUtf8) || (facts.isUtf8 && scanner.HasMarkedName())) {
        facts.errorOffset = 0;
        return false;
    }
    facts.instructions = std::move(scanner.Instructions());
    facts.places = std::move(scanner.Places());
    if (!scanner.Replacements().empty()) {
        text = WithReplacements(text, scanner.Replacements(), facts.isUtf8);
    }
    return true;
}

} // namespace VFoundation
