#pragma once

#include "foundation/core/Export.h"
#include "foundation/persistence/IXMLFileIO.h"

namespace VFoundation {

struct XMLTextFacts;

/// What the back ends that hold a document as a tree have in common: opening, closing and the moves of the cursor.
/// Installed because `VXMLFileIOTinyXml` derives from it; clients use `IXMLFileIO`.
///
/// `Back` is the derived class. It holds the state and knows its tree library; this class has no data.
///
/// Ownership, threads: as `IXMLFileIO`.
template <class Back>
class VFOUNDATION_API XMLTreeIO : public IXMLFileIO {
    friend Back;
    XMLTreeIO() = default;

  public:
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
    bool OpenFirstChildText() override;
    bool OpenNextSiblingText() override;
    bool CloseChild() override;

    int GetLevel() const override;
    int GetMode() const override;
    bool IsValid() const override;
    void PrintIndent() override;
    bool IsComplete() const override;
    Failure LastFailure() const override;
    std::string Position() const override;

  private:
    Back& Self() noexcept { return static_cast<Back&>(*this); }
    Back const& Self() const noexcept { return static_cast<Back const&>(*this); }

    template <class Reader>
    bool Load(char const* name, Reader readText) noexcept;
    void StartSaving(char const* path, VString* target);
    bool Save();

    template <class Node>
    bool MoveTo(Node node, int levels) noexcept;
    bool MoveToFirstOf(bool (XMLTreeIO::*openFirst)());
    template <class Node>
    bool MayAppend(Node parent) const noexcept;
    template <class Node>
    bool AppendElement(Node parent, char const* name, int levels);
    template <class Node>
    bool AppendText(Node parent, int levels);
    bool Refuse() noexcept;
    bool Check(std::string& text, XMLTextFacts& facts);
    template <class Operation>
    bool Guarded(Operation operation) noexcept;
};

} // namespace VFoundation
