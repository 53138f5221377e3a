#include "foundation/persistence/internal/VXMLFileIOPugiXml.h"

#include "foundation/persistence/internal/XMLPrinter.h"
#include "foundation/persistence/internal/XMLTreeOperations.h"

#include <cstring>
#include <strings.h>
#include <utility>
#include <vector>

namespace VFoundation {

template class XMLTreeIO<VXMLFileIOPugiXml>;

namespace {

// Everything becomes a node, and no byte is changed but for references: PrepareXMLText did the rest.
constexpr unsigned kParseOptions = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi |
                                   pugi::parse_declaration | pugi::parse_doctype | pugi::parse_escapes;

bool IsText(pugi::xml_node node) {
    return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

/// The declaration or an instruction like "xml-stylesheet", which TinyXML takes for one.
bool IsDeclaration(pugi::xml_node node) {
    return node.type() == pugi::node_declaration ||
           (node.type() == pugi::node_pi && ::strncasecmp(node.name(), "xml", 3) == 0);
}

/// A document type's text from "!DOCTYPE" on, of which `value` is the rest, in place.
char const* WithKeyword(char const* value) {
    while (*value != '!') {
        --value;
    }
    return value;
}

/// The node after this one in the document.
pugi::xml_node Following(pugi::xml_node node) {
    if (pugi::xml_node const child = node.first_child()) {
        return child;
    }
    while (node && !node.next_sibling()) {
        node = node.parent();
    }
    return node.next_sibling();
}

/// Makes the whole text of each instruction, of which pugixml loses white space, its value.
bool RestoreInstructions(pugi::xml_node document, std::vector<std::string> const& instructions) {
    auto next = instructions.begin();
    for (pugi::xml_node node = document; node && next != instructions.end(); node = Following(node)) {
        if (node.type() == pugi::node_pi && !IsDeclaration(node) && !node.set_value((next++)->c_str())) {
            return false;
        }
    }
    return true;
}

} // namespace

bool VXMLFileIOPugiXml::Parse(std::string text) {
    XMLTextFacts facts;
    if (!Check(text, facts)) {
        return false;
    }
    m_text = std::move(text);
    return m_document.load_buffer_inplace(m_text.data(), m_text.size(), kParseOptions, pugi::encoding_utf8) &&
           RestoreInstructions(m_document, facts.instructions);
}

bool VXMLFileIOPugiXml::Print(std::FILE* stream) {
    return XMLPrinter(stream).Print(m_document);
}

bool VXMLFileIOPugiXml::Print(VString& target) {
    XMLPrinter printer(nullptr);
    if (!printer.Print(m_document) || printer.Text().size() > kMaxTextSize) {
        return false;
    }
    target = printer.Text().c_str();
    return target.Length() == printer.Text().size();
}

void VXMLFileIOPugiXml::ClearTree() {
    m_document.reset();
    std::string().swap(m_text);
}

pugi::xml_node VXMLFileIOPugiXml::ElementFrom(pugi::xml_node node, char const* name) {
    while (node && (!IsElement(node) || (name && VString::stricmp(node.name(), name) != 0))) {
        node = node.next_sibling();
    }
    return node;
}

pugi::xml_node VXMLFileIOPugiXml::TextFrom(pugi::xml_node node) {
    while (node && !IsText(node)) {
        node = node.next_sibling();
    }
    return node;
}

pugi::xml_node VXMLFileIOPugiXml::AddElement(pugi::xml_node parent, char const* name) {
    pugi::xml_node element = parent.append_child(pugi::node_element);
    return element.set_name(name) ? element : pugi::xml_node();
}

pugi::xml_node VXMLFileIOPugiXml::AddText(pugi::xml_node parent) {
    return parent.append_child(pugi::node_pcdata);
}

// Content

char const* VXMLFileIOPugiXml::GetNodeName() const {
    switch (m_pCurrent.type()) {
    case pugi::node_element:
        return m_pCurrent.name();
    case pugi::node_doctype:
        return WithKeyword(m_pCurrent.value());
    case pugi::node_pi:
        return IsDeclaration(m_pCurrent) ? "" : m_pCurrent.value();
    default:
        return m_pCurrent.value();
    }
}

bool VXMLFileIOPugiXml::WriteAttribute(char const* name, char const* value) {
    if (!IsElement(m_pCurrent) || !name || !value) {
        return false;
    }
    int count = 0;
    for (auto next = m_pCurrent.first_attribute(); next; next = next.next_attribute()) {
        if (std::strcmp(next.name(), name) == 0) {
            return next.set_value(value) || Refuse();
        }
        ++count;
    }
    if (!IsXMLName(name) || count >= kMaxAttributes) {
        return Refuse();
    }
    pugi::xml_attribute attribute = m_pCurrent.append_attribute("");
    return (attribute.set_name(name) && attribute.set_value(value)) || Refuse();
}

bool VXMLFileIOPugiXml::ReadAttribute(char const* name, char const*& value) {
    pugi::xml_attribute const attribute = name ? m_pCurrent.attribute(name) : pugi::xml_attribute();
    value = attribute && IsElement(m_pCurrent) ? attribute.value() : nullptr;
    return value != nullptr;
}

bool VXMLFileIOPugiXml::WriteText(char const* text) {
    return text && IsText(m_pCurrent) && (m_pCurrent.set_value(text) || Refuse());
}

bool VXMLFileIOPugiXml::ReadText(char const*& text) {
    text = IsText(m_pCurrent) ? m_pCurrent.value() : nullptr;
    return text != nullptr;
}

int VXMLFileIOPugiXml::GetNodeType() {
    switch (m_pCurrent.type()) {
    case pugi::node_document:
        return kDocument;
    case pugi::node_element:
        return kElement;
    case pugi::node_comment:
        return kComment;
    case pugi::node_pcdata:
    case pugi::node_cdata:
        return kText;
    default:
        return IsDeclaration(m_pCurrent) ? kDeclaration : kUnknown;
    }
}

} // namespace VFoundation
