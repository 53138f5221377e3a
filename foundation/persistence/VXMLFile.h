#pragma once

#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

#include <cstdint>
#include <memory>

namespace VFoundation {

class IXMLFileIO;
class IXMLFileIOFactory;
class VColour;
class VImage;
class VString;
struct SColour;
struct SPoint;
struct SRect;

/// One XML document: a cursor for its elements, attributes and texts, and the form in which the library's
/// objects stand in it. A class writes and reads itself with one function, which calls `Serialize...` for
/// each member; these write while the document is saving and read while it is loading.
///
///     VXMLFile file;
///     if (file.OpenFileForWrite("prefs.xml", "Prefs")) {   // the cursor stands on the element Prefs
///         file.WriteObject("window", windowState);
///         saved = file.CloseFile();                        // only this writes the file
///     }
///
/// Saving replaces the file in one step: whatever goes wrong, the document that was there stays whole. A
/// document that could not take in everything it was given (limits, names that XML does not allow) is not
/// saved. The limits on size, nesting and attributes are `IXMLFileIO`'s.
///
/// What XML carries: every byte of a C string as attribute value or text. Floats have 6 digits, doubles 16
/// (which makes the very largest, above 1.797693134862315e308, infinite), `long` 32 bits. An empty attribute counts as absent for all readers of typed values, `VString` included.
/// Loading keeps all white space in texts that hold more than that; for this it switches off TinyXML's
/// condensing of white space for the whole process. Text of blanks only is kept when it was saved as CDATA or
/// as character references, which this class does. A text beside child elements that holds "]]>" or a
/// carriage return reads back from a file with the indentation of what follows it.
///
/// Errors: results are false or null; `GetErrorStr()` says a little more. Without a back end the object is
/// safe to use and every operation fails.
///
/// Ownership: the document owns its tree; text pointers are borrowed until the document is closed or the node
/// written. Objects that are written or read into are borrowed.
/// Threads: one thread at a time per document.
class VXMLFile : public Registered<VXMLFile, VObject> {
  public:
    static constexpr char const* kClassName = "VXMLFile";
    static VClass* ms_theClass;

    explicit VXMLFile(VClass* cls = nullptr);
    VXMLFile(VXMLFile const&) = delete;
    VXMLFile& operator=(VXMLFile const&) = delete;
    /// Closes the document, which writes one that is saving.
    ~VXMLFile() override;

    static VXMLFile* New() { return new VXMLFile(nullptr); }
    static void InitializeClass();
    static void UninitializeClass();

    /// Installs the maker of back ends (adopted) and deletes the one before it. Only at start-up.
    static void SetIXMLFileIOFactory(IXMLFileIOFactory* factory);
    /// Deletes the factory; documents made from here on have no back end. Only at shut-down.
    static void ClearIXMLFileIOFactory();

    /// A new file (owned) with the same error code and no document.
    VXMLFile* Copy() const override;

    // Opening and closing. An open document is dropped unsaved by opening another.

    virtual void Clear();
    /// Loads a file and stands on its root element; false when that is not called `rootName`. Only regular
    /// files are read. CR LF and CR count as LF.
    virtual bool OpenFileForRead(char const* path, char const* rootName);
    /// Loads a document from memory (borrowed for the call), line ends as they are.
    virtual bool LoadFile(char const* name, unsigned char const* bytes, unsigned long length,
                          char const* rootName);
    /// Starts a document with an empty root element; `CloseFile` writes it to `path`.
    virtual bool OpenFileForWrite(char const* path, char const* rootName);
    /// Starts a document with an empty root element; `CloseFile` puts its text into `target` (borrowed until
    /// then).
    virtual bool WriteFileToString(VString& target, char const* rootName);
    /// False when the document could not be written, or none is open.
    virtual bool CloseFile();

    // The cursor. Each `Open...` is closed by one `CloseChild()`. Element names are compared without regard
    // to case, null is any element; while saving, elements and texts are created. Where nothing is found, the
    // cursor stays.

    /// Iteration: `OpenChildren()`, `OpenNextSiblingElement(name)` until it is false, `CloseChildren()`.
    virtual bool OpenChildren();
    virtual bool CloseChildren();
    virtual bool OpenFirstChild();
    virtual bool OpenNextSibling();
    virtual bool OpenFirstChildElement(char const* name);
    virtual bool OpenNextSiblingElement(char const* name);
    /// The first child while `first` is true, which it clears when there is one; else the next sibling.
    virtual bool OpenChildElement(char const* name, bool& first);
    /// The first or next element whose attribute "name" is `nameValue`, without regard to case; a null value
    /// is any. While saving, the attribute is written. Where no first child fits, the cursor is back at the
    /// parent; where no sibling fits, it stands on the last of that name.
    virtual bool OpenFirstChildElement(char const* elementName, char const* nameValue);
    virtual bool OpenNextSiblingElement(char const* elementName, char const* nameValue);
    /// The element's name; the empty string without a document.
    virtual char const* GetNodeName() const;
    virtual bool OpenFirstChildText();
    virtual bool OpenNextSiblingText();
    virtual bool CloseChild();

    // Raw values: the attribute as it is, empty ones included, and the text of a text node.
    virtual bool ReadAttribute(char const* name, char const*& value);
    virtual bool WriteAttribute(char const* name, char const* value);
    virtual bool ReadText(char const*& text);
    virtual bool WriteText(char const* text);

    /// Nodes opened less nodes closed; while loading, a move to the next sibling element counts as opening.
    virtual int GetLevel() const;
    /// 0 without a document, 1 loading, 2 saving.
    virtual int GetMode() const;
    virtual bool IsValid() const;
    /// One of `IXMLFileIO::eNodeType`.
    virtual int GetNodeType();

    // Typed attributes. Writers are false without a document or name. Readers are also false, and leave the
    // value alone, when the attribute is absent or empty; text that is no number reads as 0. Numbers use "."
    // whatever the locale. `long` and the shorter integers read as 32 bits, saturating, and keep the low bits
    // of narrower types. A `long long` out of range reads as 0 and false. True is "true" or "yes", any case.

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

    /// The default is not written, and stands for an absent attribute. True in both cases.
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

    /// Sets or clears `mask` in `flags`; true when the attribute was there, else the default counts.
    virtual bool ReadBoolFlagAttribute(char const* name, unsigned long& flags, unsigned long mask,
                                       bool defaultValue);
    virtual bool WriteBoolFlagAttribute(char const* name, unsigned long const& flags, unsigned long mask,
                                        bool defaultValue);
    virtual bool SerializeBoolFlagAttribute(char const* name, unsigned long& flags, unsigned long mask,
                                            bool defaultValue);
    virtual bool SerializeBoolAttribute(char const* name, bool& value, bool defaultValue);

    /// A colour, also read from a child object of that name. The default is not written, and stands for an
    /// absent colour. DELIBERATE: false whenever saving; callers ignore the result.
    virtual bool SerializeColourAttribute(char const* name, SColour& colour, SColour const& defaultColour);

    /// Loads the image file that the attribute names, releases the image that `image` holds and puts the new
    /// one there (owned by the caller). True when the attribute was there, also when the file was no image,
    /// which leaves `image` alone.
    virtual bool ReadImageAttribute(char const* name, VImage*& image);
    /// Writes the name of the file that the image came from. DELIBERATE: always false; callers ignore the
    /// result.
    virtual bool WriteImageAttribute(char const* name, VImage* image);
    virtual bool SerializeImageAttribute(char const* name, VImage*& image);

    // "left, top, right, bottom" and "x, y".
    virtual bool ReadRectAttribute(char const* name, SRect& rect);
    virtual bool WriteRectAttribute(char const* name, SRect& rect);
    virtual bool SerializeRectAttribute(char const* name, SRect& rect);
    virtual bool ReadPointAttribute(char const* name, SPoint& point);
    virtual bool WritePointAttribute(char const* name, SPoint& point);
    virtual bool SerializePointAttribute(char const* name, SPoint& point);

    // An index written as one of `count` names. Reading does not regard case; a text that is none of the
    // names is false and leaves the value alone, and so is writing an index without a name.
    virtual bool SerializeEnumAttribute(char const* name, int& value, int count, char const* const* names);
    /// The default is not written, and stands for an absent attribute. True in both cases.
    virtual bool SerializeEnumAttribute(char const* name, int& value, int count, char const* const* names,
                                        int defaultValue);
    virtual bool ReadEnumAttribute(char const* name, int& value, int count, char const* const* names);
    virtual bool WriteEnumAttribute(char const* name, int value, int count, char const* const* names);

    // Objects. Each is a child element called like its class, with the attributes "name" (unless that is null
    // or empty), "version" (when the class's is greater than 1) and what the class writes itself. A reader
    // with a name takes the first child of that name and a fitting class, without a name the first that fits.

    virtual bool ReadObject(char const* name, VObject& object);
    virtual bool WriteObject(char const* name, VObject const& object);
    virtual bool SerializeObject(char const* name, VObject& object);
    /// Lets the object read itself from the first child of its class or of a base of it. False for null and
    /// when there is none. The version in the document is not handed on.
    virtual bool ReadObject(char const* name, VObject* object);
    /// Whether a child of exactly that class is there; the cursor stays.
    virtual bool CanReadObject(char const* name, VClass* cls);
    /// False for null, and when the element could not be created.
    virtual bool WriteObject(char const* name, VObject const* object);
    virtual bool SerializeObject(char const* name, VObject* object);
    /// Makes a new object (owned) from the first child of a registered class, one derived from `base` unless
    /// that is null. Null while saving, and when no child fits.
    virtual VObject* ReadAndCreateObject(char const* name, VClass* base);

    /// "None", "XML lib disabled" (no factory), "XML lib init failed" (the factory gave nothing), "Bad mode"
    /// (an object to be made from a document that is saving) or "Parsing failure" (not loaded, or another
    /// root). A document that opens sets it back to "None".
    virtual char const* GetErrorStr();

    virtual bool IsLoading() const;
    virtual bool IsSaving() const;

    // For classes that hold objects of any class; the cursor stands on the object's element.

    /// The class the element stands for: its attribute "class", else its name.
    char const* ObjectClassName();
    /// The class of that name in the registry, else the one that was set to replace it, else null.
    static VClass* ObjectClassNamed(char const* className);
    /// Makes the object (owned) and lets it read itself. What goes wrong is traced, with `reporter` in front,
    /// and gives null.
    VObject* CreateObjectHere(char const* reporter);

    static IXMLFileIOFactory* ms_xml_io_factory;
    /// What `SerializeColourAttribute` reads child objects into.
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
    bool Loaded(bool isLoaded);
    bool HasName(char const* name);
    template <class Fits>
    bool OpenFittingChild(char const* name, Fits fits);

    std::int32_t m_nError = kNone;     // one of eError
    std::unique_ptr<IXMLFileIO> m_pIO; // never null
    VObjectRef<VString> m_pFileName;   // null until the first successful opening
};

} // namespace VFoundation
