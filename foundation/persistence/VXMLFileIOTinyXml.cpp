#include "foundation/persistence/VXMLFileIOTinyXml.h"

#include "foundation/core/Mutex.h"
#include "foundation/persistence/internal/XMLTreeOperations.h"

#include <tinyxml.h>

namespace VFoundation {

template class XMLTreeIO<VXMLFileIOTinyXml>;

namespace {

/// Begins nothing in a document.
constexpr char kEndMark = '!';

/// The switch is TinyXML's own and holds for the process; other code may have set it. The lock protects it here.
void KeepWhiteSpace() {
    static constinit detail::Mutex s_switch;
    detail::MutexLock const lock(s_switch);
    if (TiXmlBase::IsWhiteSpaceCondensed()) {
        TiXmlBase::SetCondenseWhiteSpace(false);
    }
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

bool VXMLFileIOTinyXml::Parse(std::string text) {
    XMLTextFacts facts;
    if (!Check(text, facts)) {
        return false;
    }
    // TinyXML returns null both at the end of the text and where it gave up: a mark after the text tells them apart.
    text += kEndMark;
    KeepWhiteSpace();
    TiXmlEncoding const encoding = facts.isUtf8 ? TIXML_ENCODING_UTF8 : TIXML_ENCODING_LEGACY;
    return m_pDocument->Parse(text.c_str(), nullptr, encoding) != nullptr;
}

void VXMLFileIOTinyXml::ProtectTexts() {
    for (TiXmlText* const text : m_texts) {
        bool const isAlone = !text->NextSibling() && !text->PreviousSibling();
        text->SetCDATA(NeedsXMLCData(text->ValueStr(), isAlone));
    }
}

bool VXMLFileIOTinyXml::Print(std::FILE* stream) {
    ProtectTexts();
    return m_pDocument->SaveFile(stream);
}

bool VXMLFileIOTinyXml::Print(VString& target) {
    ProtectTexts();
    std::string text;
    text << *m_pDocument;
    if (text.size() > kMaxTextSize) {
        return false;
    }
    target = text.c_str();
    return target.Length() == text.size();
}

void VXMLFileIOTinyXml::ClearTree() {
    m_texts.clear();
    m_pDocument->Clear();
}

// The tree

TiXmlNode* VXMLFileIOTinyXml::Document() const {
    return m_pDocument.get();
}

TiXmlNode* VXMLFileIOTinyXml::FirstChildOf(TiXmlNode* node) {
    return node->FirstChild();
}

TiXmlNode* VXMLFileIOTinyXml::NextSiblingOf(TiXmlNode* node) {
    return node->NextSibling();
}

TiXmlNode* VXMLFileIOTinyXml::ParentOf(TiXmlNode* node) {
    return node->Parent();
}

TiXmlNode* VXMLFileIOTinyXml::ElementFrom(TiXmlNode* node, char const* name) {
    while (node && (!IsElement(node) || (name && VString::stricmp(node->Value(), name) != 0))) {
        node = node->NextSibling();
    }
    return node;
}

TiXmlNode* VXMLFileIOTinyXml::TextFrom(TiXmlNode* node) {
    while (node && !node->ToText()) {
        node = node->NextSibling();
    }
    return node;
}

char const* VXMLFileIOTinyXml::NameOf(TiXmlNode const* node) {
    return node->Value();
}

bool VXMLFileIOTinyXml::IsElement(TiXmlNode const* node) {
    return node->ToElement() != nullptr;
}

bool VXMLFileIOTinyXml::IsDocument(TiXmlNode const* node) {
    return node->ToDocument() != nullptr;
}

TiXmlNode* VXMLFileIOTinyXml::AddElement(TiXmlNode* parent, char const* name) {
    return parent->LinkEndChild(new TiXmlElement(name));
}

TiXmlNode* VXMLFileIOTinyXml::AddText(TiXmlNode* parent) {
    auto text = std::make_unique<TiXmlText>("");
    m_texts.push_back(text.get());
    return parent->LinkEndChild(text.release());
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

} // namespace VFoundation
