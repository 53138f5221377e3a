#pragma once

#include "foundation/persistence/IXMLFileIO.h"

#include <cstdint>
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
/// inside TinyXML's parser, TinyXML itself leaks the node that it was making.
///
/// Ownership, threads: as `IXMLFileIO`. Several back ends may be used by several threads.
class VXMLFileIOTinyXml : public IXMLFileIO {
  public:
    VXMLFileIOTinyXml();
    VXMLFileIOTinyXml(VXMLFileIOTinyXml const&) = delete;
    VXMLFileIOTinyXml& operator=(VXMLFileIOTinyXml const&) = delete;
    ~VXMLFileIOTinyXml() override;

    bool OpenFileForRead(char const* path) override;
    bool LoadFile(char const* name, unsigned char const* bytes, unsigned long length) override;
    bool OpenFileForWrite(char const* path) override;
    bool WriteFileToString(VString& target) override;
    bool CloseFile() override;
    void Clear() override;

    bool OpenChildren() override;
    bool CloseChildren() override;
    bool OpenFirstChild() override;
    bool OpenNextSibling() override;
    bool OpenFirstChildElement(char const* name) override;
    bool OpenNextSiblingElement(char const* name) override;
    char const* GetNodeName() const override;
    bool OpenFirstChildText() override;
    bool OpenNextSiblingText() override;
    bool CloseChild() override;

    bool WriteAttribute(char const* name, char const* value) override;
    bool ReadAttribute(char const* name, char const*& value) override;
    bool WriteText(char const* text) override;
    bool ReadText(char const*& text) override;

    int GetLevel() const override { return m_nLevel; }
    int GetMode() const override { return m_nMode; }
    bool IsValid() const override { return m_pCurrent != nullptr; }
    int GetNodeType() override;
    void PrintIndent() override;
    bool IsComplete() const override { return !m_isIncomplete; }

  private:
    template <class Reader>
    bool Load(char const* name, Reader readText) noexcept;
    bool Parse(std::string text);
    void StartSaving(char const* path, VString* target);
    bool Save();
    bool SaveToFile();
    bool SaveToString();
    void ProtectTexts();

    bool MoveTo(TiXmlNode* node, int levels) noexcept;
    bool MoveToFirstOf(bool (VXMLFileIOTinyXml::*openFirst)());
    bool MayAppend(TiXmlNode const* parent) const noexcept;
    bool AppendElement(TiXmlNode* parent, char const* name, int levels);
    bool AppendText(TiXmlNode* parent, int levels);
    bool Refuse() noexcept;
    template <class Operation>
    bool Guarded(Operation operation) noexcept;

    std::unique_ptr<TiXmlDocument> m_pDocument;
    TiXmlNode* m_pCurrent = nullptr;
    std::int32_t m_nMode = kNoDocument;
    std::int32_t m_nLevel = 0;
    bool m_bChildrenPending = false;
    std::string m_path;
    VString* m_pTargetString = nullptr;

    std::vector<TiXmlText*> m_texts; // of a document that is saving
    bool m_isIncomplete = false;     // something was refused while saving
};

} // namespace VFoundation
