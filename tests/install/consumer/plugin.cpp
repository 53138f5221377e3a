#include <foundation/VFoundation.h>

using namespace VFoundation;

extern "C" [[gnu::visibility("default")]] VClass* PluginStringClass() {
    return VString::TheClass();
}

extern "C" [[gnu::visibility("default")]] VClass* PluginRingClass() {
    return TRingBuffer<VString, TRefCounted<VString>>::TheClass();
}

extern "C" [[gnu::visibility("default")]] VObject* PluginNewString() {
    return VString::NewString("from the plug-in");
}
