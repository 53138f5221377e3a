#pragma once

#include "foundation/core/Export.h"
#include "foundation/persistence/XMLTreeIO.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

class TiXmlDocument;
class TiXmlElement;
class TiXmlNode;
class TiXmlText;

namespace VFoundation {

/// The XML back end on TinyXML.
///
/// Only well-formed documents are loaded: the text is checked before TinyXML parses it. Bytes are taken as they are;
/// character references are read as UTF-8 only in a document that is declared as UTF-8.
///
/// A document is saved as TinyXML prints it: indented in a file, without white space in a string. A text of blanks only
/// is written as a CDATA section, because TinyXML would drop it when it loads; so is a text beside other nodes,
/// because TinyXML prints line feeds around it. A saved file is replaced in one step and keeps its permissions
/// (FileReplacer.h).
///
/// When a node or attribute cannot be added to a document that is saving (a limit, a name that XML does not allow, a
/// second root, no memory), the document takes nothing more and is not written.
///
/// Loading a document switches TinyXML's condensing of white space off for the whole process. When memory runs out
/// inside TinyXML's parser, TinyXML leaks the elements that it had not finished.
///
/// Ownership, threads: as `IXMLFileIO`. Several back ends may be used by several threads.
class VFOUNDATION_API VXMLFileIOTinyXml : public XMLTreeIO<VXMLFileIOTinyXml> {
  public:
    VXMLFileIOTinyXml();
    VXMLFileIOTinyXml(VXMLFileIOTinyXml const&) = delete;
    VXMLFileIOTinyXml& operator=(VXMLFileIOTinyXml const&) = delete;
    ~VXMLFileIOTinyXml() override;

    char const* GetNodeName() const override;
    bool WriteAttribute(char const* name, char const* value) override;
    bool ReadAttribute(char const* name, char const*& value) override;
    bool WriteText(char const* text) override;
    bool ReadText(char const*& text) override;

    int GetNodeType() override;

  private:
    friend class XMLTreeIO<VXMLFileIOTinyXml>;

    bool Parse(std::string text);
    bool Print(std::FILE* stream);
    bool Print(VString& target);
    void ProtectTexts();
    void ClearTree();
    TiXmlNode* Document() const;
    static TiXmlNode* FirstChildOf(TiXmlNode* node);
    static TiXmlNode* NextSiblingOf(TiXmlNode* node);
    static TiXmlNode* ParentOf(TiXmlNode* node);
    static TiXmlNode* ElementFrom(TiXmlNode* node, char const* name);
    static TiXmlNode* TextFrom(TiXmlNode* node);
    static char const* NameOf(TiXmlNode const* node);
    static bool IsElement(TiXmlNode const* node);
    static bool IsDocument(TiXmlNode const* node);
    static TiXmlNode* AddElement(TiXmlNode* parent, char const* name);
    TiXmlNode* AddText(TiXmlNode* parent);

    std::unique_ptr<TiXmlDocument> m_pDocument;
    TiXmlNode* m_pCurrent = nullptr;
    std::int32_t m_nMode = kNoDocument;
    std::int32_t m_nLevel = 0;
    bool m_bChildrenPending = false;
    std::string m_path;
    VString* m_pTargetString = nullptr;

    std::vector<TiXmlText*> m_texts; // of a document that is saving
    Failure m_failure;               // of the last opening or closing
    bool m_isIncomplete = false;     // something was refused while saving
};

extern template class XMLTreeIO<VXMLFileIOTinyXml>;

} // namespace VFoundation
