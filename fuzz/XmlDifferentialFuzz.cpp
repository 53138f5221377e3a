// One XML document on both back ends: they refuse the same texts, show the same nodes, attributes and texts, and save
// the same bytes.

#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/persistence/VXMLFileIOPugiXmlFactory.h"
#include "foundation/persistence/VXMLFileIOTinyXmlFactory.h"
#include "foundation/strings/VString.h"
#include "fuzz/FuzzInput.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

using namespace VFoundation;
using fuzzing::Require;

namespace {

constexpr std::size_t kMostNames = 12;

std::unique_ptr<VXMLFile> NewFile(bool onPugiXml) {
    if (onPugiXml) {
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOPugiXmlFactory);
    } else {
        VXMLFile::SetIXMLFileIOFactory(new VXMLFileIOTinyXmlFactory);
    }
    return std::make_unique<VXMLFile>();
}

/// What stands before each '=': attributes can only be asked for by name.
std::vector<std::string> NamesIn(std::string_view text) {
    std::vector<std::string> names;
    for (std::size_t i = text.find('='); i != text.npos && names.size() < kMostNames;
         i = text.find('=', i + 1)) {
        std::string_view before = text.substr(0, i);
        before = before.substr(0, before.find_last_not_of(" \t\r\n") + 1);
        names.emplace_back(before.substr(before.find_last_of(" \t\r\n") + 1));
    }
    return names;
}

struct Both {
    VXMLFile& tiny;
    VXMLFile& pugi;
    std::vector<std::string> const& names;

    /// The same call on both, with the same result.
    template <class Call>
    bool Same(Call call, char const* what) {
        bool const result = call(tiny);
        Require(call(pugi) == result, what);
        return result;
    }
    /// The text that a call gives on both; null when it is false.
    template <class Call>
    char const* SameText(Call call, char const* what) {
        char const* a = nullptr;
        char const* b = nullptr;
        bool const isThere = call(tiny, a);
        Require(call(pugi, b) == isThere, what);
        Require(!isThere || std::strcmp(a, b) == 0, what);
        return isThere ? a : nullptr;
    }
};

/// Compares the node at the cursors and all below, and writes it to both files of `out`.
void Compare(Both in, Both out) {
    int const type = in.tiny.GetNodeType();
    Require(in.pugi.GetNodeType() == type, "kinds of nodes");
    char const* const name = in.tiny.GetNodeName();
    Require(std::strcmp(in.pugi.GetNodeName(), name) == 0, "names of nodes");
    Require(in.pugi.GetLevel() == in.tiny.GetLevel(), "levels");
    if (type == IXMLFileIO::kText) {
        char const* const text =
            in.SameText([](VXMLFile& file, char const*& read) { return file.ReadText(read); }, "texts");
        out.Same([text](VXMLFile& file) { return file.OpenNextSiblingText() && file.WriteText(text); },
                 "written texts");
    }
    if (type != IXMLFileIO::kElement) {
        return;
    }
    out.Same([name](VXMLFile& file) { return file.OpenNextSiblingElement(name); }, "written elements");
    for (auto const& attribute : in.names) {
        auto const read = [&](VXMLFile& file, char const*& text) {
            return file.ReadAttribute(attribute.c_str(), text);
        };
        if (char const* const text = in.SameText(read, "attributes")) {
            out.Same([&](VXMLFile& file) { return file.WriteAttribute(attribute.c_str(), text); },
                     "written attributes");
        }
    }
    out.Same([](VXMLFile& file) { return file.OpenChildren(); }, "children");
    in.Same([](VXMLFile& file) { return file.OpenChildren(); }, "children");
    while (in.Same([](VXMLFile& file) { return file.OpenNextSibling(); }, "siblings")) {
        Compare(in, out);
    }
    in.Same([](VXMLFile& file) { return file.CloseChildren(); }, "ends of children");
    out.Same([](VXMLFile& file) { return file.CloseChildren(); }, "ends of children");
}

std::string BytesOf(char const* path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    if (!VXMLFileIOPugiXmlFactory::IsAvailable()) {
        return 0;
    }
    std::vector<std::string> const names =
        NamesIn(std::string_view(reinterpret_cast<char const*>(bytes), size));
    auto const tiny = NewFile(false);
    auto const pugi = NewFile(true);
    Both in{*tiny, *pugi, names};
    in.Same([&](VXMLFile& file) { return file.LoadFile("fuzz", bytes, size, nullptr); }, "what loads");
    if (!in.Same([](VXMLFile& file) { return file.IsValid(); }, "what is open")) {
        return 0;
    }
    for (bool const toFile : {false, true}) {
        auto const tinyOut = NewFile(false);
        auto const pugiOut = NewFile(true);
        VString tinyText;
        VString pugiText;
        fuzzing::MemoryFile const tinyBytes("", 0);
        fuzzing::MemoryFile const pugiBytes("", 0);
        Require(toFile ? tinyOut->OpenFileForWrite(tinyBytes.Path(), "r")
                       : tinyOut->WriteFileToString(tinyText, "r"),
                "a document starts");
        Require(toFile ? pugiOut->OpenFileForWrite(pugiBytes.Path(), "r")
                       : pugiOut->WriteFileToString(pugiText, "r"),
                "a document starts");
        Both out{*tinyOut, *pugiOut, names};
        out.Same([](VXMLFile& file) { return file.OpenChildren(); }, "children");
        Compare(in, out);
        out.Same([](VXMLFile& file) { return file.CloseFile(); }, "what is saved");
        Require(toFile ? BytesOf(tinyBytes.Path()) == BytesOf(pugiBytes.Path()) : tinyText == pugiText,
                "saved bytes");
    }
    return 0;
}
