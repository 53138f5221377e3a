// XML documents from outside: whatever loads is walked with every kind of move, its attributes are read as every type,
// and every object in it is made. Nothing is saved.

#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/persistence/IXMLFileIO.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/values/SColour.h"
#include "foundation/strings/values/SPoint.h"
#include "foundation/strings/values/SRect.h"
#include "fuzz/FuzzInput.h"

#include <cstring>

using namespace VFoundation;
using fuzzing::Require;

namespace {

constexpr char const* kAttributes[] = {"name", "count", "x", "type", "value", "colour", "version", "string"};
constexpr char const* kNames[] = {"a", "b", "true"};

template <class T>
void ReadAs(VXMLFile& file, char const* name, T value = T()) {
    T const before = value;
    if (!file.ReadAttribute(name, value)) {
        Require(std::memcmp(&before, &value, sizeof value) == 0 || value == T(),
                "a value without a text stays, or is 0 out of range");
    }
}

void ReadAttributes(VXMLFile& file) {
    for (char const* const name : kAttributes) {
        ReadAs<long>(file, name);
        ReadAs<short>(file, name);
        ReadAs<unsigned char>(file, name);
        ReadAs<bool>(file, name);
        ReadAs<double>(file, name);
        ReadAs<float>(file, name);
        ReadAs<long long>(file, name);
        SPoint point;
        SRect rect;
        SColour colour;
        int index = 1;
        file.ReadPointAttribute(name, point);
        file.ReadRectAttribute(name, rect);
        file.SerializeColourAttribute(name, colour, colour);
        file.ReadEnumAttribute(name, index, 3, kNames);
        Require(index >= 0 && index < 3, "an index is one of the names");
    }
}

/// Visits every node below the cursor and returns their number.
long Walk(VXMLFile& file, int depth) {
    Require(depth <= IXMLFileIO::kMaxNesting + 1, "elements nest as deep as allowed");
    long nodes = 0;
    char const* text = nullptr;
    file.OpenChildren();
    while (file.OpenNextSibling()) {
        ++nodes;
        if (file.GetNodeType() == IXMLFileIO::kElement) {
            ReadAttributes(file);
            nodes += Walk(file, depth + 1);
        } else if (file.GetNodeType() == IXMLFileIO::kText) {
            Require(file.ReadText(text), "a text is read");
        }
    }
    file.CloseChildren();
    return nodes;
}

/// Makes every object that the children of the root describe.
void MakeObjects(VXMLFile& file) {
    bool first = true;
    while (file.OpenChildElement(nullptr, first)) {
        auto const made = VObjectRef<VObject>::Adopt(file.CreateObjectHere("fuzz"));
    }
    if (!first) {
        file.CloseChild();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* bytes, std::size_t size) {
    fuzzing::StartLibrary();
    VXMLFile file;
    if (!file.LoadFile("fuzz", bytes, size, "Settings")) {
        if (!file.IsValid()) {
            return 0;
        }
        Require(file.OpenFirstChildElement(nullptr), "a document that loads has a root");
    }
    long const nodes = Walk(file, 1);
    Require(nodes <= static_cast<long>(size), "a node takes a byte at least");
    Require(Walk(file, 1) == nodes, "the cursor comes back");
    try {
        MakeObjects(file);
        auto const items = VObjectRef<VObject>::Adopt(file.ReadAndCreateObject("items", nullptr));
    } catch (VException const&) {
        // no memory for what the document asks for
    }
    return 0;
}
