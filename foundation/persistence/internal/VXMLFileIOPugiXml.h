#pragma once

#include "foundation/persistence/XMLTreeIO.h"

#include <cstdint>
#include <cstdio>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace VFoundation {

/// The XML back end on pugixml: the same documents, results and texts as `VXMLFileIOTinyXml`, which says what they are.
/// pugixml parses in place and knows no limits; the text is checked before it. Documents are printed here, byte for byte
/// as TinyXML prints them.
///
/// Ownership, threads: as `IXMLFileIO`.
class VXMLFileIOPugiXml : public XMLTreeIO<VXMLFileIOPugiXml> {
  public:
    VXMLFileIOPugiXml() = default;
    VXMLFileIOPugiXml(VXMLFileIOPugiXml const&) = delete;
    VXMLFileIOPugiXml& operator=(VXMLFileIOPugiXml const&) = delete;

    char const* GetNodeName() const override;
    bool WriteAttribute(char const* name, char const* value) override;
    bool ReadAttribute(char const* name, char const*& value) override;
    bool WriteText(char const* text) override;
    bool ReadText(char const*& text) override;
    int GetNodeType() override;

  private:
    friend class XMLTreeIO<VXMLFileIOPugiXml>;

    bool Parse(std::string text);
    bool Print(std::FILE* stream);
    bool Print(VString& target);
    void ClearTree();
    pugi::xml_node Document() const { return m_document; }
    static pugi::xml_node FirstChildOf(pugi::xml_node node) { return node.first_child(); }
    static pugi::xml_node NextSiblingOf(pugi::xml_node node) { return node.next_sibling(); }
    static pugi::xml_node ParentOf(pugi::xml_node node) { return node.parent(); }
    static pugi::xml_node ElementFrom(pugi::xml_node node, char const* name);
    static pugi::xml_node TextFrom(pugi::xml_node node);
    static char const* NameOf(pugi::xml_node node) { return node.name(); }
    static bool IsElement(pugi::xml_node node) { return node.type() == pugi::node_element; }
    static bool IsDocument(pugi::xml_node node) { return node.type() == pugi::node_document; }
    static pugi::xml_node AddElement(pugi::xml_node parent, char const* name);
    static pugi::xml_node AddText(pugi::xml_node parent);

    pugi::xml_document m_document;
    pugi::xml_node m_pCurrent;
    std::int32_t m_nMode = kNoDocument;
    std::int32_t m_nLevel = 0;
    bool m_bChildrenPending = false;
    std::string m_path;
    VString* m_pTargetString = nullptr;

    std::string m_text;          // what the tree of a loaded document points into
    std::vector<Place> m_places; // of the elements of a loaded document
    Failure m_failure;           // of the last opening or closing
    bool m_isIncomplete = false; // something was refused while saving
};

extern template class XMLTreeIO<VXMLFileIOPugiXml>;

} // namespace VFoundation
