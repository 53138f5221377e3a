#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/persistence/LoadReport.h"

#include <cstdint>
#include <memory>
#include <string>

namespace VFoundation {

class IXMLFileIO;
class IXMLFileIOFactory;
class VColour;
class VImage;
class VString;
struct SColour;
struct SPoint;
struct SRect;

/// One XML document: a cursor over its elements, attributes and texts, and the library's form of objects in XML. A
/// class writes and reads itself with one function, which calls `Serialize...` for each member: these write while the
/// document is saving and read while it is loading.
///
///     VXMLFile file;
///     if (file.OpenFileForWrite("prefs.xml", "Prefs")) {   // the cursor is on the root element
///         file.WriteObject("window", windowState);
///         saved = file.CloseFile();                        // writes the file
///     }
///
/// Saving replaces the file in one step: when it fails at any point, the old document is still there, whole. Only in
/// a directory that does not let a file be created is the document written in place. A document that could not take
/// everything it was given (limits, names that XML does not allow, no memory) is not saved.
///
/// Limits: the size, nesting and attribute counts of `IXMLFileIO`. TinyXML compares each attribute with all others of
/// its element: a text whose elements have 1 000 attributes each takes a third of a second per megabyte to load.
///
/// Every byte of a C string but 0 is kept, in attribute values and texts. Floats have 6 digits, doubles 16 (which makes
/// those above 1.797693134862315e308 infinite), `long` 32 bits. An empty attribute counts as absent for all readers
/// of typed values, `VString` included. Loading keeps the white space of texts, for which it switches off TinyXML's
/// condensing of white space for the whole process. A text of blanks only is kept when it was saved as CDATA or as
/// character references, as this class does. A text beside child elements that contains "]]>" or a carriage return
/// reads back from a file with the indentation that follows it.
///
/// Errors: results are false or null; `ErrorDescription()` gives the reason, `Report()` what a document that loaded has
/// and the objects have not. Without memory operations fail in the same way;
/// only the constructor, `Copy` and what an object throws while it writes or reads itself let an exception pass. A
/// document that is saving is dropped then, so that half of an object is never saved. Without a back end the object
/// is safe to use and every operation fails.
///
/// Ownership: the document owns its tree; text pointers are borrowed until the document is closed or the node is
/// written. Objects that are written or read into are borrowed.
/// Threads: one thread at a time per document.
class VFOUNDATION_API VXMLFile : public Registered<VXMLFile, VObject> {
  public:
    static constexpr char const* kClassName = "VXMLFile";
    static VClass* ms_theClass;

    explicit VXMLFile(VClass* cls = nullptr);
    VXMLFile(VXMLFile const&) = delete;
    VXMLFile& operator=(VXMLFile const&) = delete;
    /// Closes the document, which writes one that is saving.
    ~VXMLFile() override;

    [[nodiscard]] static VXMLFile* New() { return new VXMLFile(nullptr); }
    static void InitializeClass();
    static void UninitializeClass();

    /// Installs the factory of back ends (adopted) and deletes the one before it. Only at start-up.
    static void SetIXMLFileIOFactory(IXMLFileIOFactory* factory);
    /// Deletes the factory; documents made after this have no back end. Only at shut-down.
    static void ClearIXMLFileIOFactory();

    /// A new object (owned) with the same error code and no document.
    [[nodiscard]] VXMLFile* Copy() const override;

    // Opening and closing. Opening another document drops the one that is open, unsaved.

    /// Drops the document without writing it.
    virtual void Clear();
    /// Loads a regular file and enters its root element. CR LF and CR count as LF. False when the file does not load,
    /// with no document open, and when its root is not called `rootName`: the document is open then, and
    /// `OpenFirstChildElement` may try another name.
    virtual bool OpenFileForRead(char const* path, char const* rootName);
    /// The same with a document in memory (borrowed for the call), line ends as they are.
    virtual bool LoadFile(char const* name, unsigned char const* bytes, unsigned long length,
                          char const* rootName);
    /// Starts a document with an empty root element; `CloseFile` writes it to `path`.
    virtual bool OpenFileForWrite(char const* path, char const* rootName);
    /// Starts a document with an empty root element; `CloseFile` puts its text into `target` (borrowed until
    /// then).
    virtual bool WriteFileToString(VString& target, char const* rootName);
    /// Closes the document. False when it could not be written, or none is open.
    virtual bool CloseFile();

    // A document with one object, which most files are.

    /// Writes the object to a file. False, with an old file as it was, when that fails. Another document that is open is
    /// dropped.
    [[nodiscard]] bool SaveObject(char const* path, char const* rootName, VObject const& object);
    /// Reads the object from such a file: the first one of its class or of a base class. True when nothing of it was
    /// passed over; else false, `ErrorDescription()` says what was first, and the object has what could be read. The
    /// document is closed in either case.
    [[nodiscard]] bool LoadObject(char const* path, char const* rootName, VObject& object);

    // The cursor. Each `Open...` is closed by one `CloseChild()`. Element names are compared without regard to case;
    // null matches any element. While saving, elements and texts are created. When nothing is found, the cursor stays.

    /// Iteration: `OpenChildren()`, `OpenNextSiblingElement(name)` until it is false, `CloseChildren()`.
    virtual bool OpenChildren();
    virtual bool CloseChildren();
    virtual bool OpenFirstChild();
    virtual bool OpenNextSibling();
    virtual bool OpenFirstChildElement(char const* name);
    virtual bool OpenNextSiblingElement(char const* name);
    /// For loops: opens the first child while `first` is true and clears it on success; else the next sibling.
    virtual bool OpenChildElement(char const* name, bool& first);
    /// The first or next element whose attribute "name" is `nameValue`, without regard to case; null matches any.
    /// While saving, the attribute is written. When no child matches, the cursor is on the parent again; when no
    /// sibling matches, it is on the last one of that name.
    virtual bool OpenFirstChildElement(char const* elementName, char const* nameValue);
    virtual bool OpenNextSiblingElement(char const* elementName, char const* nameValue);
    /// The element's name; the empty string without a document.
    virtual char const* GetNodeName() const;
    virtual bool OpenFirstChildText();
    virtual bool OpenNextSiblingText();
    virtual bool CloseChild();

    // Raw values: attributes as they are, also empty ones, and the text of a text node.
    virtual bool ReadAttribute(char const* name, char const*& value);
    virtual bool WriteAttribute(char const* name, char const* value);
    virtual bool ReadText(char const*& text);
    virtual bool WriteText(char const* text);

    /// Nodes opened less nodes closed; while loading, a move to the next sibling element counts as opening.
    virtual int GetLevel() const;
    /// 0 without a document, 1 loading, 2 saving.
    virtual int GetMode() const;
    virtual bool IsValid() const;
    /// False once the document refused something while saving, such as an element nested too deep: `CloseFile()` will
    /// be false. `WriteObject` is true even then, so ask here whether an object was written as a whole.
    bool IsComplete() const;
    /// One of `IXMLFileIO::eNodeType`.
    virtual int GetNodeType();

    // Typed attributes. Writers are false without a document or name. Readers are also false, and keep the value,
    // when the attribute is absent or empty; text that is no number reads as 0. Numbers use "." in every locale.
    // `long` and shorter integers are read as 32 bits, saturating; a narrower type keeps the low bits. A `long long`
    // out of range reads as 0 and false. "true" and "yes" in any case are true, all other text is false.

    virtual bool WriteAttribute(char const* name, VString const& value);
    virtual bool WriteAttribute(char const* name, long value);
    virtual bool WriteAttribute(char const* name, int value);
    virtual bool WriteAttribute(char const* name, unsigned short value);
    virtual bool WriteAttribute(char const* name, short value);
    virtual bool WriteAttribute(char const* name, char value);
    virtual bool WriteAttribute(char const* name, unsigned char value);
    virtual bool WriteAttribute(char const* name, float value);
    virtual bool WriteAttribute(char const* name, double value);
    virtual bool WriteAttribute(char const* name, bool value);
    virtual bool WriteAttribute(char const* name, long long value);

    virtual bool ReadAttribute(char const* name, VString& value);
    virtual bool ReadAttribute(char const* name, long& value);
    virtual bool ReadAttribute(char const* name, int& value);
    virtual bool ReadAttribute(char const* name, unsigned short& value);
    virtual bool ReadAttribute(char const* name, short& value);
    virtual bool ReadAttribute(char const* name, char& value);
    virtual bool ReadAttribute(char const* name, unsigned char& value);
    virtual bool ReadAttribute(char const* name, float& value);
    virtual bool ReadAttribute(char const* name, double& value);
    virtual bool ReadAttribute(char const* name, bool& value);
    virtual bool ReadAttribute(char const* name, long long& value);

    /// A value equal to the default is not written; an absent attribute reads as the default. True in both cases.
    virtual bool SerializeAttribute(char const* name, VString& value, VString const& defaultValue);
    virtual bool SerializeAttribute(char const* name, long& value);
    virtual bool SerializeAttribute(char const* name, int& value);
    virtual bool SerializeAttribute(char const* name, unsigned short& value);
    virtual bool SerializeAttribute(char const* name, short& value);
    virtual bool SerializeAttribute(char const* name, char& value);
    virtual bool SerializeAttribute(char const* name, unsigned char& value);
    virtual bool SerializeAttribute(char const* name, float& value);
    virtual bool SerializeAttribute(char const* name, double& value);
    virtual bool SerializeAttribute(char const* name, bool& value);
    virtual bool SerializeAttribute(char const* name, long long& value);

    // One bit of a word as a bool attribute, written only when it differs from the default.

    /// Sets or clears `mask` in `flags` by the attribute, or by the default without one. True when it was there.
    virtual bool ReadBoolFlagAttribute(char const* name, unsigned long& flags, unsigned long mask,
                                       bool defaultValue);
    virtual bool WriteBoolFlagAttribute(char const* name, unsigned long const& flags, unsigned long mask,
                                        bool defaultValue);
    virtual bool SerializeBoolFlagAttribute(char const* name, unsigned long& flags, unsigned long mask,
                                            bool defaultValue);
    virtual bool SerializeBoolAttribute(char const* name, bool& value, bool defaultValue);

    /// A colour, also read from a child object of that name. A colour equal to the default is not written; an absent
    /// one reads as the default.
    /// DELIBERATE: false whenever saving; callers ignore the result.
    virtual bool SerializeColourAttribute(char const* name, SColour& colour, SColour const& defaultColour);

    /// Loads the image file that the attribute names and replaces `image` (which is released) by it, owned by the
    /// caller. True when the attribute was there, even if the file did not load; `image` is unchanged then.
    virtual bool ReadImageAttribute(char const* name, VImage*& image);
    /// Writes the name of the file that the image came from.
    /// DELIBERATE: always false; callers ignore the result.
    virtual bool WriteImageAttribute(char const* name, VImage* image);
    virtual bool SerializeImageAttribute(char const* name, VImage*& image);

    // "left, top, right, bottom" and "x, y".
    virtual bool ReadRectAttribute(char const* name, SRect& rect);
    virtual bool WriteRectAttribute(char const* name, SRect& rect);
    virtual bool SerializeRectAttribute(char const* name, SRect& rect);
    virtual bool ReadPointAttribute(char const* name, SPoint& point);
    virtual bool WritePointAttribute(char const* name, SPoint& point);
    virtual bool SerializePointAttribute(char const* name, SPoint& point);

    // An index, written as one of `count` names and read in any case. False, with the value unchanged, when the text
    // is none of the names, and when an index without a name is to be written.
    virtual bool SerializeEnumAttribute(char const* name, int& value, int count, char const* const* names);
    /// A value equal to the default is not written; an absent attribute reads as the default. True in both cases.
    virtual bool SerializeEnumAttribute(char const* name, int& value, int count, char const* const* names,
                                        int defaultValue);
    virtual bool ReadEnumAttribute(char const* name, int& value, int count, char const* const* names);
    virtual bool WriteEnumAttribute(char const* name, int value, int count, char const* const* names);

    // Objects. Each is a child element with the name of its class, the attributes "name" (unless null or empty) and
    // "version" (when the class's is greater than 1), and what the class writes itself. Readers take the first child
    // of a matching class, and of that name unless it is null.

    virtual bool ReadObject(char const* name, VObject& object);
    virtual bool WriteObject(char const* name, VObject const& object);
    virtual bool SerializeObject(char const* name, VObject& object);
    /// Lets the object read itself from the first child of its class or of a base class. False for null and when there
    /// is none. The object does not learn the version in the document.
    virtual bool ReadObject(char const* name, VObject* object);
    /// Whether a child of exactly that class is there; the cursor stays.
    virtual bool CanReadObject(char const* name, VClass* cls);
    /// False for null, and when the element could not be created.
    virtual bool WriteObject(char const* name, VObject const* object);
    virtual bool SerializeObject(char const* name, VObject* object);
    /// Makes a new object (owned) from the first child of a registered class, derived from `base` unless that is null.
    /// Null while saving, when no child matches, and without memory.
    [[nodiscard]] virtual VObject* ReadAndCreateObject(char const* name, VClass* base);

    /// "None", "XML lib disabled" (no factory), "XML lib init failed" (the factory made nothing), "Bad mode" (reading
    /// an object while saving) or "Parsing failure" (did not load, or has another root). Opening a document sets it
    /// to "None".
    virtual char const* GetErrorStr();

    virtual bool IsLoading() const;
    virtual bool IsSaving() const;

    /// Why the last opening, closing or `LoadObject` failed, with the file, the line and column of a text that is not
    /// well-formed, and the system's reason, as in "cannot load prefs.xml at line 3, column 7: not a well-formed
    /// document, or one beyond the limits"; empty when it did not fail. Without memory `std::bad_alloc`.
    VString ErrorDescription() const;
    /// What was passed over while the document loaded; kept until another is opened.
    LoadReport const& Report() const noexcept { return m_report; }
    /// For classes that load objects: adds a loss at the cursor. `detail` is the class, or null.
    void NoteLoss(LoadReport::eLoss loss, char const* detail) noexcept;
    /// Adds one when `found` elements are not as many as the document says.
    void NoteCount(long expected, long found) noexcept;

    // For classes that hold objects of any class. The cursor is on the object's element.

    /// The class the element stands for: its attribute "class", else its name.
    char const* ObjectClassName();
    /// The class of that name in the registry, else its substitute, else null.
    static VClass* ObjectClassNamed(char const* className);
    /// Makes the object (owned) and lets it read itself. Null, after a trace that begins with `reporter`, when its
    /// class is unknown or makes no objects.
    [[nodiscard]] VObject* CreateObjectHere(char const* reporter);

    static IXMLFileIOFactory* ms_xml_io_factory;
    /// The object that `SerializeColourAttribute` reads a child into.
    static VColour* ms_tempXMLIOCol;

  private:
    enum eError : std::int32_t {
        kNone = 0,
        kDisabled = 1,
        kInitFailed = 2,
        kBadMode = 3,
        kParsingFailure = 4
    };

    bool EnterRoot(char const* name, char const* rootName);
    bool Loaded(bool isLoaded, char const* path);
    bool Started(bool isStarted, char const* path);
    void RememberPath(char const* path) noexcept;
    void ReadInto(VObject& object);
    bool HasName(char const* name);
    template <class Fits>
    bool OpenFittingChild(char const* name, Fits fits);

    std::int32_t m_nError = kNone;     // one of eError
    std::unique_ptr<IXMLFileIO> m_pIO; // never null
    VObjectRef<VString> m_pFileName;   // null until the first successful opening
    LoadReport m_report;
    static constexpr char kLoadAllAction[] = "load all of";
    static constexpr char kStartAction[] = "start";
    char const* m_failedAction = nullptr; // null when the last opening or closing did not fail
    std::string m_path; // of the last document; empty for one in memory, and when memory ran out
};

} // namespace VFoundation
