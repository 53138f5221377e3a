#pragma once

namespace VFoundation {

class VString;

/// A cursor over one XML tree, kept by a library that parses and prints XML: what `VXMLFile` stands on.
///
/// A document is loading or saving. A cursor stands on one node, at first on the document itself; every
/// operation works there. Every failure is a false result; nothing is logged or thrown.
///
/// The limits below hold in both directions: a text beyond them does not load, and what would write one is
/// refused.
///
/// Ownership: a back end is the property of the `VXMLFile` that had it made. Text results are borrowed until
/// the node changes or the document is left.
/// Threads: one thread at a time.
class IXMLFileIO {
  public:
    /// Bytes of a document's text.
    static constexpr unsigned long kMaxTextSize = 256UL << 20;
    /// Elements inside each other, the root included.
    static constexpr int kMaxNesting = 1000;
    /// Attributes of one element.
    static constexpr int kMaxAttributes = 1000;

    enum eMode : int { kNoDocument = 0, kLoading = 1, kSaving = 2 };
    enum eNodeType : int {
        kDocument = 0,
        kElement = 1,
        kComment = 2,
        kUnknown = 3,
        kText = 4,
        kDeclaration = 5
    };

    virtual ~IXMLFileIO() = default;

    // Opening leaves the document before it unsaved and puts the cursor on the new document's node.

    /// Reads a regular file. CR LF and CR in it count as LF.
    virtual bool OpenFileForRead(char const* path) = 0;
    /// Reads `length` bytes of memory (borrowed for the call), line ends as they are; `name` stands for a path.
    virtual bool LoadFile(char const* name, unsigned char const* bytes, unsigned long length) = 0;
    /// Starts an empty document; `CloseFile` writes it to `path`. The disk is not touched before.
    virtual bool OpenFileForWrite(char const* path) = 0;
    /// Starts an empty document; `CloseFile` puts its text into `target` (borrowed until then).
    virtual bool WriteFileToString(VString& target) = 0;
    /// Ends the document and writes one that is saving; false when that failed.
    virtual bool CloseFile() = 0;
    /// Drops the document without writing it.
    virtual void Clear() = 0;

    // Iteration: `OpenChildren()`, then `OpenNextSibling...` until it is false, then `CloseChildren()`.

    /// Makes the next `OpenNextSibling...` open the first child instead.
    virtual bool OpenChildren() = 0;
    virtual bool CloseChildren() = 0;

    // While saving, the operations for elements and texts append a new node. Element names are compared
    // without regard to case; null is any element. Where nothing is found, the cursor stays.
    virtual bool OpenFirstChild() = 0;
    virtual bool OpenNextSibling() = 0;
    virtual bool OpenFirstChildElement(char const* name) = 0;
    virtual bool OpenNextSiblingElement(char const* name) = 0;
    /// An element's name; the empty string without a cursor.
    virtual char const* GetNodeName() const = 0;
    virtual bool OpenFirstChildText() = 0;
    virtual bool OpenNextSiblingText() = 0;
    /// Back to the parent; false on the document.
    virtual bool CloseChild() = 0;

    // Attributes need the cursor on an element, texts on a text node.
    virtual bool WriteAttribute(char const* name, char const* value) = 0;
    virtual bool ReadAttribute(char const* name, char const*& value) = 0;
    virtual bool WriteText(char const* text) = 0;
    virtual bool ReadText(char const*& text) = 0;

    /// Nodes opened less nodes closed.
    virtual int GetLevel() const = 0;
    /// One of `eMode`.
    virtual int GetMode() const = 0;
    /// True while a document is open.
    virtual bool IsValid() const = 0;
    /// One of `eNodeType`; `kUnknown` without a cursor.
    virtual int GetNodeType() = 0;
    /// Prints four blanks to the standard output for each level but the first; for debugging.
    virtual void PrintIndent() = 0;
};

} // namespace VFoundation
