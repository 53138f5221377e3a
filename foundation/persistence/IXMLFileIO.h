#pragma once

#include "foundation/core/Export.h"

#include <string>

namespace VFoundation {

class VString;

/// The back end of `VXMLFile`: a cursor over one XML tree that a library parses and prints.
///
/// A document is loading or saving. The cursor stands on one node, at first the document itself, and every operation
/// works there. Every failure is a false result; nothing is logged or thrown.
///
/// The limits below hold in both directions: a text that exceeds them does not load, and a node or attribute that
/// would exceed them is not written.
///
/// Ownership: owned by the `VXMLFile` that made it. Text results are borrowed until the node changes or the document
/// is closed.
/// Threads: one thread at a time.
class VFOUNDATION_API IXMLFileIO {
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

    // Opening drops the document that is open, unsaved, and puts the cursor on the new document.

    /// Reads a regular file. CR LF and CR in it count as LF.
    virtual bool OpenFileForRead(char const* path) = 0;
    /// Reads `length` bytes of memory (borrowed for the call), line ends as they are. `name` is used as the path.
    virtual bool LoadFile(char const* name, unsigned char const* bytes, unsigned long length) = 0;
    /// Starts an empty document; `CloseFile` writes it to `path`. Nothing is written earlier.
    virtual bool OpenFileForWrite(char const* path) = 0;
    /// Starts an empty document; `CloseFile` puts its text into `target` (borrowed until then).
    virtual bool WriteFileToString(VString& target) = 0;
    /// Closes the document and writes one that is saving; false when none is open or writing failed.
    virtual bool CloseFile() = 0;
    /// Drops the document without writing it.
    virtual void Clear() = 0;

    // Iteration: `OpenChildren()`, then `OpenNextSibling...` until it is false, then `CloseChildren()`.

    /// Makes the next `OpenNextSibling...` open the first child instead.
    virtual bool OpenChildren() = 0;
    virtual bool CloseChildren() = 0;

    // While saving, the operations for elements and texts append a new node. Element names are compared without
    // regard to case; null matches any element. When no node is found, the cursor stays.
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

    // Attributes need the cursor on an element, texts need it on a text node.
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

    /// False once something was refused while saving: closing the document will fail. A back end that refuses nothing
    /// need not override it.
    virtual bool IsComplete() const { return true; }

    /// Why the last opening or closing failed.
    struct Failure {
        char const* reason =
            nullptr;            // a static text; null when nothing failed, or when the system has the reason
        int systemError = 0;    // the system's error number
        unsigned long line = 0; // both from 1; 0 where a text is not to blame
        unsigned long column = 0; // in bytes
    };
    virtual Failure LastFailure() const { return {}; }
    /// The elements from the root to the cursor, as "Settings/VObjectArray[2]" for the second one of that name; empty
    /// without a cursor and from a back end that does not know.
    virtual std::string Position() const { return {}; }
};

} // namespace VFoundation
