// One object of each kind that the printers for gdb know. gdb_test.sh stops in Stop() and prints them.

#include "foundation/containers/VDictionary.h"
#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/graph/VGraphNode.h"
#include "foundation/strings/VString.h"
#include "foundation/strings/values/VColour.h"
#include "foundation/strings/values/VValue.h"

#include <cstdlib>
#include <string>

using namespace VFoundation;

namespace {

struct Catalogue {
    Catalogue() {
        longText = std::string(150, 'x').append("end").c_str();
        shortText = "caf\xC3\xA9 \"quoted\"";
        objects.AddObject(&shortText);
        objects.AddObject(&colour);
        objects.AddObject(&settings);
        texts.AddObjectTyped(&shortText);
        texts.AddObjectTyped(&empty);
        settings.SetObjectForKey(&colour, &shortText);
        settings.SetObjectForKey(&number, &longText);
        roads.SetObjectForKey(&empty, "title");
        roads.SetObjectForKey(&number, "length");
        number.Value().SetValueToDouble(0.25);
        text.SetValueToString(shortText);
        object.SetValueToObject(&objects);
        integer.SetValueToInt(-5);
        reference = VObjectRef<VString>(&shortText);
        pointers.AddPtr(nullptr);
        other.SetValueToObject(node.Get());
    }

    VString empty;
    VString shortText;
    VString longText;
    VColour colour{255, 128, 0, 64, "Amber"};
    SColour plainColour{1, 2, 3, 4};
    VObjectArray objects;
    VObjectArrayTmpl<VString> texts;
    VPtrArray pointers;
    VDictionary settings;
    VDictionary roads;
    VValue number;
    SValue nothing;
    SValue text;
    SValue object;
    SValue integer;
    SValue other;
    VObjectRef<VString> reference;
    VObjectRef<VString> noReference;
    VObjectRef<VGraphNode> node = VObjectRef<VGraphNode>::Adopt(VGraphNode::New());
};

[[gnu::noinline]] void Stop(Catalogue const& catalogue) {
    asm volatile("" : : "r"(&catalogue) : "memory");
}

} // namespace

int main() {
    InitializeLibrary(false);
    Stop(*new Catalogue);
    std::_Exit(0); // the objects hold one another: nothing is taken apart
}
