// The XML document, from the class down to TinyXML:
//
//   VXMLFile.cpp             construction, factory, opening and closing, the cursor
//   VXMLFileAttributes.cpp   typed attributes: numbers, strings, flags, points and rectangles, enumerations
//   VXMLFileColour.cpp       colour attributes
//   VXMLFileImage.cpp        image attributes
//   VXMLFileObjects.cpp      whole objects as child elements
//   VXMLFileErrors.cpp       why something failed, and what loading passed over
//   VXMLFileIOTinyXml.cpp, internal/VXMLFileIOPugiXml.cpp   the back ends: each its tree
//   internal/XMLTreeOperations.h      what they share: cursor, loading and saving
//   internal/XMLInput.cpp             reads a text
//   internal/XMLTextCheck.cpp         checks it before it is parsed
//   internal/XMLPrinter.cpp           prints a tree of pugixml
//   internal/FileReplacer_posix.cpp   replaces the saved file in one step
#include "foundation/persistence/VXMLFile.h"

#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/IXMLFileIOFactory.h"
#include "foundation/strings/VString.h"

#include <new>
#include <utility>

namespace VFoundation {

VClass* VXMLFile::ms_theClass = nullptr;
IXMLFileIOFactory* VXMLFile::ms_xml_io_factory = nullptr;

namespace {

/// Used when no back end could be made: every operation fails.
class NoXMLFileIO final : public IXMLFileIO {
  public:
    bool OpenFileForRead(char const*) override { return false; }
    bool LoadFile(char const*, unsigned char const*, unsigned long) override { return false; }
    bool OpenFileForWrite(char const*) override { return false; }
    bool WriteFileToString(VString&) override { return false; }
    bool CloseFile() override { return false; }
    void Clear() override {}
    bool OpenChildren() override { return false; }
    bool CloseChildren() override { return false; }
    bool OpenFirstChild() override { return false; }
    bool OpenNextSibling() override { return false; }
    bool OpenFirstChildElement(char const*) override { return false; }
    bool OpenNextSiblingElement(char const*) override { return false; }
    char const* GetNodeName() const override { return ""; }
    bool OpenFirstChildText() override { return false; }
    bool OpenNextSiblingText() override { return false; }
    bool CloseChild() override { return false; }
    bool WriteAttribute(char const*, char const*) override { return false; }
    bool ReadAttribute(char const*, char const*& value) override { return (value = nullptr); }
    bool WriteText(char const*) override { return false; }
    bool ReadText(char const*& text) override { return (text = nullptr); }
    int GetLevel() const override { return 0; }
    int GetMode() const override { return kNoDocument; }
    bool IsValid() const override { return false; }
    int GetNodeType() override { return kUnknown; }
    void PrintIndent() override {}
};

} // namespace

VXMLFile::VXMLFile(VClass* cls)
    : Registered(cls), m_pIO(ms_xml_io_factory ? ms_xml_io_factory->New() : nullptr) {
    if (!m_pIO) {
        m_nError = ms_xml_io_factory ? kInitFailed : kDisabled;
        m_pIO = std::make_unique<NoXMLFileIO>();
    }
}

VXMLFile::~VXMLFile() {
    if (m_pIO->IsValid()) {
        VXMLFile::CloseFile();
    }
}

VXMLFile* VXMLFile::Copy() const {
    auto* const copy = new VXMLFile;
    copy->m_nError = m_nError;
    return copy;
}

void VXMLFile::SetIXMLFileIOFactory(IXMLFileIOFactory* factory) {
    if (factory != ms_xml_io_factory) {
        delete std::exchange(ms_xml_io_factory, factory);
    }
}

void VXMLFile::ClearIXMLFileIOFactory() {
    SetIXMLFileIOFactory(nullptr);
}

char const* VXMLFile::GetErrorStr() {
    switch (m_nError) {
    case kNone:
        return "None";
    case kDisabled:
        return "XML lib disabled";
    case kInitFailed:
        return "XML lib init failed";
    case kBadMode:
        return "Bad mode";
    case kParsingFailure:
        return "Parsing failure";
    default:
        return "Unknown";
    }
}

// Opening and closing

/// Remembers the name unless it is null, and enters the root of the document that the back end opened.
bool VXMLFile::EnterRoot(char const* name, char const* rootName) {
    try {
        if (name && !m_pFileName) {
            m_pFileName.Allocate();
        }
    } catch (std::bad_alloc const&) {
        m_pIO->Clear();
        return false;
    }
    if (name) {
        *m_pFileName = name;
    }
    if (OpenFirstChildElement(rootName)) {
        m_nError = kNone;
        return true;
    }
    if (IsSaving()) {
        m_pIO->Clear(); // or an empty document would replace the file
    }
    return false;
}

/// Sets the error when a document did not load.
bool VXMLFile::Loaded(bool isLoaded, char const* path) {
    RememberPath(path);
    m_failedAction = isLoaded ? nullptr : "load";
    if (!isLoaded && m_nError != kDisabled && m_nError != kInitFailed) {
        m_nError = kParsingFailure;
    }
    return isLoaded;
}

bool VXMLFile::Started(bool isStarted, char const* path) {
    RememberPath(path);
    m_failedAction = isStarted ? nullptr : kStartAction;
    return isStarted;
}

void VXMLFile::Clear() {
    m_pIO->Clear();
}

bool VXMLFile::OpenFileForRead(char const* path, char const* rootName) {
    m_report.Clear();
    return Loaded(m_pIO->OpenFileForRead(path) && EnterRoot(path, rootName), path);
}

bool VXMLFile::LoadFile(char const* name, unsigned char const* bytes, unsigned long length,
                        char const* rootName) {
    m_report.Clear();
    return Loaded(m_pIO->LoadFile(name, bytes, length) && EnterRoot(name, rootName), name);
}

bool VXMLFile::OpenFileForWrite(char const* path, char const* rootName) {
    m_report.Clear();
    return Started(m_pIO->OpenFileForWrite(path) && EnterRoot(path, rootName), path);
}

bool VXMLFile::WriteFileToString(VString& target, char const* rootName) {
    m_report.Clear();
    return Started(m_pIO->WriteFileToString(target) && EnterRoot(nullptr, rootName), nullptr);
}

bool VXMLFile::CloseFile() {
    bool const isSaving = IsSaving();
    m_pIO->CloseChild();
    bool const isClosed = m_pIO->CloseFile();
    m_failedAction = isClosed ? nullptr : isSaving ? "save" : "close";
    return isClosed;
}

// The cursor

bool VXMLFile::OpenChildren() {
    return m_pIO->OpenChildren();
}

bool VXMLFile::CloseChildren() {
    return m_pIO->CloseChildren();
}

bool VXMLFile::OpenFirstChild() {
    return m_pIO->OpenFirstChild();
}

bool VXMLFile::OpenNextSibling() {
    return m_pIO->OpenNextSibling();
}

bool VXMLFile::OpenFirstChildElement(char const* name) {
    return m_pIO->OpenFirstChildElement(name);
}

bool VXMLFile::OpenNextSiblingElement(char const* name) {
    return m_pIO->OpenNextSiblingElement(name);
}

bool VXMLFile::OpenChildElement(char const* name, bool& first) {
    if (!first) {
        return OpenNextSiblingElement(name);
    }
    first = !OpenFirstChildElement(name);
    return !first;
}

bool VXMLFile::OpenFirstChildElement(char const* elementName, char const* nameValue) {
    if (!OpenFirstChildElement(elementName)) {
        return false;
    }
    if (IsSaving()) {
        return !nameValue || WriteAttribute("name", nameValue);
    }
    if (HasName(nameValue) || OpenNextSiblingElement(elementName, nameValue)) {
        return true;
    }
    CloseChild();
    return false;
}

bool VXMLFile::OpenNextSiblingElement(char const* elementName, char const* nameValue) {
    while (OpenNextSiblingElement(elementName)) {
        if (IsSaving()) {
            return !nameValue || WriteAttribute("name", nameValue);
        }
        if (HasName(nameValue)) {
            return true;
        }
    }
    return false;
}

/// Whether the element has that name. Null matches any; without the attribute the name is empty.
bool VXMLFile::HasName(char const* name) {
    char const* value = nullptr;
    return !name || VString::stricmp(ReadAttribute("name", value) ? value : "", name) == 0;
}

char const* VXMLFile::GetNodeName() const {
    return m_pIO->IsValid() ? m_pIO->GetNodeName() : "";
}

bool VXMLFile::OpenFirstChildText() {
    return m_pIO->OpenFirstChildText();
}

bool VXMLFile::OpenNextSiblingText() {
    return m_pIO->OpenNextSiblingText();
}

bool VXMLFile::CloseChild() {
    return m_pIO->CloseChild();
}

bool VXMLFile::ReadAttribute(char const* name, char const*& value) {
    return m_pIO->ReadAttribute(name, value);
}

bool VXMLFile::WriteAttribute(char const* name, char const* value) {
    return m_pIO->WriteAttribute(name, value);
}

bool VXMLFile::ReadText(char const*& text) {
    return m_pIO->ReadText(text);
}

bool VXMLFile::WriteText(char const* text) {
    return m_pIO->WriteText(text);
}

int VXMLFile::GetLevel() const {
    return m_pIO->GetLevel();
}

int VXMLFile::GetMode() const {
    return m_pIO->GetMode();
}

bool VXMLFile::IsValid() const {
    return m_pIO->IsValid();
}

bool VXMLFile::IsComplete() const {
    return m_pIO->IsComplete();
}

int VXMLFile::GetNodeType() {
    return m_pIO->GetNodeType();
}

bool VXMLFile::IsLoading() const {
    return GetMode() == IXMLFileIO::kLoading;
}

bool VXMLFile::IsSaving() const {
    return GetMode() == IXMLFileIO::kSaving;
}

} // namespace VFoundation
