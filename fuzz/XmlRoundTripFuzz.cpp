// What loads is saved and loads again as the same document, both as a string and as a file; and of a document that
// the program builds from the input nothing is lost.

#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "fuzz/FuzzInput.h"

#include <cstring>
#include <string>
#include <vector>

using namespace VFoundation;
using fuzzing::Require;

namespace {

/// Takes C strings out of the input, the last one also without its end.
class Texts {
  public:
    Texts(std::uint8_t const* bytes, std::size_t size) : m_rest(reinterpret_cast<char const*>(bytes), size) {}
    bool IsAtEnd() const { return m_rest.empty(); }
    std::string Next() {
        std::size_t const end = m_rest.find('\0');
        std::string text(m_rest.substr(0, end));
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        return text;
    }

  private:
    std::string_view m_rest;
};

/// Copies the elements and texts below the cursor of `from`. Attributes are found through their names in `names`.
void CopyChildren(VXMLFile& from, VXMLFile& to, std::vector<std::string> const& names) {
    char const* value = nullptr;
    for (auto const& name : names) {
        if (from.ReadAttribute(name.c_str(), value)) {
            to.WriteAttribute(name.c_str(), value);
        }
    }
    from.OpenChildren();
    to.OpenChildren();
    while (from.OpenNextSibling()) {
        if (from.GetNodeType() == IXMLFileIO::kElement) {
            std::string const name = from.GetNodeName();
            Require(to.OpenNextSiblingElement(name.c_str()), "an element that loaded can be saved");
            CopyChildren(from, to, names);
        } else if (from.GetNodeType() == IXMLFileIO::kText && from.ReadText(value)) {
            Require(to.OpenNextSiblingText() && to.WriteText(value), "a text that loaded can be saved");
        }
    }
    from.CloseChildren();
    to.CloseChildren();
}

bool Load(VXMLFile& file, std::string const& text) {
    return file.LoadFile("fuzz", reinterpret_cast<unsigned char const*>(text.data()), text.size(), nullptr);
}

/// The document that is open, as text.
std::string Saved(VXMLFile& file, std::vector<std::string> const& names) {
    VString text;
    VXMLFile copy;
    Require(copy.WriteFileToString(text, file.GetNodeName()), "a document starts");
    CopyChildren(file, copy, names);
    Require(copy.CloseFile(), "a document that loaded can be saved");
    return text.CString();
}

void CheckLoaded(std::string const& document) {
    std::vector<std::string> const names = {"a", "name", "string", "b", "count"};
    VXMLFile file;
    if (!Load(file, document)) {
        return;
    }
    std::string const first = Saved(file, names);
    Require(Load(file, first), "what was saved loads");
    Require(Saved(file, names) == first, "it loads as it was");
}

/// Builds <r>, in it for each pair of texts an element with an attribute and a text, and checks what comes back.
void CheckBuilt(std::vector<std::string> const& texts, char const* path) {
    VXMLFile file;
    VString saved;
    path ? file.OpenFileForWrite(path, "r") : file.WriteFileToString(saved, "r");
    for (auto const& text : texts) {
        Require(file.OpenFirstChildElement("e") && file.WriteAttribute("a", text.c_str()),
                "an element is written");
        Require(file.OpenFirstChildText() && file.WriteText(text.c_str()), "a text is written");
        Require(file.CloseChild() && file.CloseChild(), "the cursor goes back");
    }
    Require(file.CloseFile(), "the document is saved");
    Require(path ? file.OpenFileForRead(path, "r") : Load(file, saved.CString()), "the document loads");
    bool first = true;
    for (auto const& text : texts) {
        char const* read = nullptr;
        Require(file.OpenChildElement("e", first), "every element comes back");
        Require(file.ReadAttribute("a", read) && text == read, "every attribute comes back");
        bool const hasText = file.OpenFirstChildText();
        Require(hasText == !text.empty(), "every text comes back");
        Require(!hasText || (file.ReadText(read) && text == read && file.CloseChild()),
                "it comes back as it was");
    }
    Require(!file.OpenChildElement("e", first), "nothing else comes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    if (size > 0 && (bytes[0] == '<' || bytes[0] == 0xEF)) {
        CheckLoaded(std::string(bytes, bytes + size));
        return 0;
    }
    std::vector<std::string> texts;
    for (Texts rest(bytes, size); !rest.IsAtEnd();) {
        texts.push_back(rest.Next());
    }
    CheckBuilt(texts, nullptr);
    fuzzing::MemoryFile const file("", 0);
    CheckBuilt(texts, file.Path());
    return 0;
}
