#include <foundation/VFoundation.h>

#include <cstdio>
#include <cstring>

using namespace VFoundation;

extern "C" VClass* PluginStringClass();
extern "C" VClass* PluginRingClass();
extern "C" VObject* PluginNewString();

namespace {

int Check(bool holds, char const* what) {
    if (!holds) {
        std::fprintf(stderr, "consumer: %s\n", what);
    }
    return holds ? 0 : 1;
}

} // namespace

int main() {
    int failures =
        Check(std::strcmp(VFOUNDATION_VERSION, INSTALLED_VERSION) == 0, "headers of another version");
    for (int round = 0; round < 2; ++round) {
        InitializeLibrary(false);
        failures += Check(PluginStringClass() == VString::TheClass(), "two records of VString");
        failures += Check(PluginRingClass() == TRingBuffer<VString, TRefCounted<VString>>::TheClass(),
                          "two records of a ring of strings");
        VObject* const text = PluginNewString();
        failures += Check(text->IsKindOfClass(VString::TheClass()), "a string of the plug-in is no string");
        failures +=
            Check(std::strcmp(static_cast<VString*>(text)->CString(), "from the plug-in") == 0, "text");
        text->Release();
        UninitializeLibrary(true, false, true);
    }
    return failures;
}
