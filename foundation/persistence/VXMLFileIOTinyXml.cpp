#include "foundation/persistence/VXMLFileIOTinyXml.h"

#include "foundation/core/Mutex.h"
#include "foundation/host/VFile.h"
#include "foundation/persistence/internal/FileReplacer.h"
#include "foundation/persistence/internal/XMLTextCheck.h"
#include "foundation/strings/VString.h"

#include <exception>
#include <tinyxml.h>

namespace VFoundation {

namespace {

constexpr char kCarriageReturn = '\r';
constexpr std::string_view kCDataEnd = "]]>";
/// Begins nothing in a document.
constexpr char kEndMark = '!';

/// The text of a file; empty when it cannot be read or is longer than a document may be.
std::string ContentsOfFile(char const* path) {
    struct Close {
        void operator()(std::FILE* stream) const noexcept { std::fclose(stream); }
    };
    std::unique_ptr<std::FILE, Close> const file(VFile::OpenRegularFile(path));
    std::string text;
    if (file && std::fseek(file.get(), 0, SEEK_END) == 0) {
        long const length = std::ftell(file.get());
        std::rewind(file.get());
        if (length > 0 && narrow_cast<unsigned long>(length) <= IXMLFileIO::kMaxTextSize) {
            text.resize(narrow_cast<std::size_t>(length));
            text.resize(std::fread(text.data(), 1, text.size(), file.get()));
        }
    }
    return file && std::ferror(file.get()) == 0 ? text : std::string();
}

/// Replaces CR LF and CR by LF.
void NormalizeLineEnds(std::string& text) {
    std::size_t kept = text.find(kCarriageReturn);
    for (std::size_t i = kept; i < text.size(); ++i) {
        char const c = text[i];
        if (c == kCarriageReturn && i + 1 < text.size() && text[i + 1] == '\n') {
            continue;
        }
        text[kept++] = c == kCarriageReturn ? '\n' : c;
    }
    text.resize(std::min(kept, text.size()));
}

/// The switch is TinyXML's own and holds for the process; other code may have set it. The lock protects it here.
void KeepWhiteSpace() {
    static constinit detail::Mutex s_switch;
    detail::MutexLock const lock(s_switch);
    if (TiXmlBase::IsWhiteSpaceCondensed()) {
        TiXmlBase::SetCondenseWhiteSpace(false);
    }
}

TiXmlElement* ElementFrom(TiXmlNode* node, char const* name) {
    for (; node; node = node->NextSibling()) {
        TiXmlElement* const element = node->ToElement();
        if (element && (!name || VString::stricmp(element->Value(), name) == 0)) {
            return element;
        }
    }
    return nullptr;
}

TiXmlText* TextFrom(TiXmlNode* node) {
    while (node && !node->ToText()) {
        node = node->NextSibling();
    }
    return node ? node->ToText() : nullptr;
}

/// The attribute of that name, or null; `count` is the number of attributes before it.
TiXmlAttribute* FindAttribute(TiXmlElement& element, char const* name, int& count) {
    TiXmlAttribute* attribute = element.FirstAttribute();
    for (count = 0; attribute && attribute->NameTStr() != name; ++count) {
        attribute = attribute->Next();
    }
    return attribute;
}

} // namespace

VXMLFileIOTinyXml::VXMLFileIOTinyXml() : m_pDocument(std::make_unique<TiXmlDocument>()) {
    m_pDocument->SetTabSize(0); // no book-keeping of rows and columns
}

VXMLFileIOTinyXml::~VXMLFileIOTinyXml() = default;

/// Runs `operation`; false when memory runs out, which makes a document that is saving incomplete.
template <class Operation>
bool VXMLFileIOTinyXml::Guarded(Operation operation) noexcept {
    try {
        return operation();
    } catch (std::exception const&) {
        return Refuse();
    }
}

/// Returns false and marks a document that is saving as incomplete.
bool VXMLFileIOTinyXml::Refuse() noexcept {
    m_isIncomplete = m_isIncomplete || m_nMode == kSaving;
    return false;
}

// Opening and closing

/// Opens the text that `readText` returns; after a failure no document is open.
template <class Reader>
bool VXMLFileIOTinyXml::Load(char const* name, Reader readText) noexcept {
    Clear();
    bool const isLoaded = Guarded([&] {
        m_path = name ? name : "";
        return Parse(readText());
    });
    if (!isLoaded) {
        Clear();
    }
    return isLoaded;
}

bool VXMLFileIOTinyXml::Parse(std::string text) {
    bool isUtf8 = false;
    if (!PrepareXMLText(text, isUtf8)) {
        return false;
    }
    // TinyXML returns null both at the end of the text and where it gave up: a mark after the text tells them apart.
    text += kEndMark;
    KeepWhiteSpace();
    m_nMode = kLoading;
    m_pCurrent = m_pDocument.get();
    TiXmlEncoding const encoding = isUtf8 ? TIXML_ENCODING_UTF8 : TIXML_ENCODING_LEGACY;
    return m_pDocument->Parse(text.c_str(), nullptr, encoding) != nullptr;
}

bool VXMLFileIOTinyXml::OpenFileForRead(char const* path) {
    return Load(path, [path] {
        std::string text = ContentsOfFile(path);
        NormalizeLineEnds(text);
        return text;
    });
}

bool VXMLFileIOTinyXml::LoadFile(char const* name, unsigned char const* bytes, unsigned long length) {
    length = bytes && length <= kMaxTextSize ? length : 0;
    while (length > 0 && bytes[length - 1] == 0) {
        --length; // a terminator that was counted
    }
    return Load(name, [&] { return std::string(reinterpret_cast<char const*>(bytes), length); });
}

bool VXMLFileIOTinyXml::OpenFileForWrite(char const* path) {
    StartSaving(path ? path : "", nullptr);
    return true;
}

bool VXMLFileIOTinyXml::WriteFileToString(VString& target) {
    StartSaving("", &target);
    return true;
}

void VXMLFileIOTinyXml::StartSaving(char const* path, VString* target) {
    Clear();
    m_nMode = kSaving;
    m_pCurrent = m_pDocument.get();
    m_pTargetString = target;
    Guarded([&] {
        m_path = path;
        return true;
    });
}

bool VXMLFileIOTinyXml::CloseFile() {
    bool const closed =
        IsValid() && (m_nMode != kSaving || (!m_isIncomplete && Guarded([&] { return Save(); })));
    Clear();
    return closed;
}

bool VXMLFileIOTinyXml::Save() {
    ProtectTexts();
    return m_pTargetString ? SaveToString() : SaveToFile();
}

/// Chooses for each text the form that reads back unchanged.
void VXMLFileIOTinyXml::ProtectTexts() {
    for (TiXmlText* const text : m_texts) {
        std::string_view const value = text->ValueStr();
        bool const isAlone = !text->NextSibling() && !text->PreviousSibling();
        bool const fits = value.find(kCarriageReturn) == std::string_view::npos &&
                          value.find(kCDataEnd) == std::string_view::npos;
        text->SetCDATA(!value.empty() && fits && (!isAlone || IsXMLBlank(value)));
    }
}

bool VXMLFileIOTinyXml::SaveToFile() {
    FileReplacer file(m_path.c_str());
    if (!file.Stream() || !m_pDocument->SaveFile(file.Stream())) {
        return false;
    }
    bool const isReadable = std::ftell(file.Stream()) <= narrow_cast<long>(kMaxTextSize);
    return isReadable && file.Commit();
}

bool VXMLFileIOTinyXml::SaveToString() {
    std::string text;
    text << *m_pDocument;
    if (text.size() > kMaxTextSize) {
        return false;
    }
    *m_pTargetString = text.c_str();
    return m_pTargetString->Length() == text.size();
}

void VXMLFileIOTinyXml::Clear() {
    m_path.clear();
    m_texts.clear();
    m_pDocument->Clear();
    m_pCurrent = nullptr;
    m_pTargetString = nullptr;
    m_nMode = kNoDocument;
    m_nLevel = 0;
    m_bChildrenPending = false;
    m_isIncomplete = false;
}

// Moving

bool VXMLFileIOTinyXml::MoveTo(TiXmlNode* node, int levels) noexcept {
    if (node) {
        m_pCurrent = node;
        m_nLevel += levels;
    }
    return node != nullptr;
}

/// What the next sibling is while children are pending: the first child.
bool VXMLFileIOTinyXml::MoveToFirstOf(bool (VXMLFileIOTinyXml::*openFirst)()) {
    m_bChildrenPending = !(this->*openFirst)();
    return !m_bChildrenPending;
}

bool VXMLFileIOTinyXml::OpenChildren() {
    m_bChildrenPending = IsValid();
    return IsValid();
}

bool VXMLFileIOTinyXml::CloseChildren() {
    if (!m_bChildrenPending) {
        return CloseChild();
    }
    m_bChildrenPending = false;
    return true;
}

bool VXMLFileIOTinyXml::OpenFirstChild() {
    return IsValid() && MoveTo(m_pCurrent->FirstChild(), 1);
}

bool VXMLFileIOTinyXml::OpenNextSibling() {
    if (m_bChildrenPending) {
        return MoveToFirstOf(&VXMLFileIOTinyXml::OpenFirstChild);
    }
    return IsValid() && MoveTo(m_pCurrent->NextSibling(), 0);
}

bool VXMLFileIOTinyXml::OpenFirstChildElement(char const* name) {
    if (!IsValid()) {
        return false;
    }
    if (m_nMode == kSaving) {
        return AppendElement(m_pCurrent, name, 1);
    }
    return MoveTo(ElementFrom(m_pCurrent->FirstChild(), name), 1);
}

bool VXMLFileIOTinyXml::OpenNextSiblingElement(char const* name) {
    if (!IsValid()) {
        return false;
    }
    if (m_bChildrenPending) {
        m_bChildrenPending = !OpenFirstChildElement(name);
        return !m_bChildrenPending;
    }
    if (m_nMode == kSaving) {
        return AppendElement(m_pCurrent->Parent(), name, 0);
    }
    return MoveTo(ElementFrom(m_pCurrent->NextSibling(), name), 1); // a move counts as an opening
}

bool VXMLFileIOTinyXml::OpenFirstChildText() {
    if (!IsValid()) {
        return false;
    }
    return m_nMode == kSaving ? AppendText(m_pCurrent, 1) : MoveTo(TextFrom(m_pCurrent->FirstChild()), 1);
}

bool VXMLFileIOTinyXml::OpenNextSiblingText() {
    if (m_bChildrenPending) {
        return MoveToFirstOf(&VXMLFileIOTinyXml::OpenFirstChildText);
    }
    if (!IsValid()) {
        return false;
    }
    return m_nMode == kSaving ? AppendText(m_pCurrent->Parent(), 0)
                              : MoveTo(TextFrom(m_pCurrent->NextSibling()), 0);
}

bool VXMLFileIOTinyXml::CloseChild() {
    return IsValid() && MoveTo(m_pCurrent->Parent(), -1);
}

/// Whether a child may be added to `parent`: one root to a document, and none to texts.
bool VXMLFileIOTinyXml::MayAppend(TiXmlNode const* parent) const noexcept {
    return parent && !m_isIncomplete &&
           (parent->ToElement() || (parent->ToDocument() && parent->NoChildren()));
}

/// Appends an element and moves the cursor to it, `levels` deeper.
bool VXMLFileIOTinyXml::AppendElement(TiXmlNode* parent, char const* name, int levels) {
    if (!name) {
        return false;
    }
    if (!MayAppend(parent) || !IsXMLName(name) || m_nLevel + levels > kMaxNesting) {
        return Refuse();
    }
    return Guarded([&] { return MoveTo(parent->LinkEndChild(new TiXmlElement(name)), levels); });
}

bool VXMLFileIOTinyXml::AppendText(TiXmlNode* parent, int levels) {
    if (!MayAppend(parent) || !parent->ToElement()) {
        return Refuse();
    }
    return Guarded([&] {
        auto text = std::make_unique<TiXmlText>("");
        m_texts.push_back(text.get());
        return MoveTo(parent->LinkEndChild(text.release()), levels);
    });
}

// Content

char const* VXMLFileIOTinyXml::GetNodeName() const {
    return IsValid() ? m_pCurrent->Value() : "";
}

bool VXMLFileIOTinyXml::WriteAttribute(char const* name, char const* value) {
    TiXmlElement* const element = IsValid() ? m_pCurrent->ToElement() : nullptr;
    if (!element || !name || !value) {
        return false;
    }
    return Guarded([&] {
        int count = 0;
        if (TiXmlAttribute* const attribute = FindAttribute(*element, name, count)) {
            attribute->SetValue(value);
            return true;
        }
        if (!IsXMLName(name) || count >= kMaxAttributes) {
            return Refuse();
        }
        element->SetAttribute(name, value);
        return true;
    });
}

bool VXMLFileIOTinyXml::ReadAttribute(char const* name, char const*& value) {
    TiXmlElement const* const element = IsValid() && name ? m_pCurrent->ToElement() : nullptr;
    value = element ? element->Attribute(name) : nullptr;
    return value != nullptr;
}

bool VXMLFileIOTinyXml::WriteText(char const* text) {
    TiXmlText* const node = IsValid() && text ? m_pCurrent->ToText() : nullptr;
    return node && Guarded([&] {
               node->SetValue(text);
               return true;
           });
}

bool VXMLFileIOTinyXml::ReadText(char const*& text) {
    TiXmlText const* const node = IsValid() ? m_pCurrent->ToText() : nullptr;
    text = node ? node->Value() : nullptr;
    return text != nullptr;
}

int VXMLFileIOTinyXml::GetNodeType() {
    static_assert(int{TiXmlNode::TINYXML_DOCUMENT} == int{kDocument} &&
                  int{TiXmlNode::TINYXML_TEXT} == int{kText} &&
                  int{TiXmlNode::TINYXML_DECLARATION} == int{kDeclaration});
    int const type = IsValid() ? m_pCurrent->Type() : kUnknown;
    return type >= kDocument && type <= kDeclaration ? type : kUnknown;
}

void VXMLFileIOTinyXml::PrintIndent() {
    for (int level = 1; level < m_nLevel; ++level) {
        std::fputs("    ", stdout);
    }
}

} // namespace VFoundation
