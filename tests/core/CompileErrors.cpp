// Compiled once for each of its macros, which switches one mistake on; none of them compiles.

#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"

using namespace VFoundation;

class Thing : public Registered<Thing, VObject> {
  public:
#ifndef NO_NAME
    static constexpr char const* kClassName = "Thing";
#endif
#ifndef NO_SLOT
    static VClass* ms_theClass;
#endif
    explicit Thing(VClass* cls) : Registered(cls) {
    }
#ifndef NO_NEW
    [[nodiscard]] static Thing* New() {
        return new Thing(nullptr);
    }
#endif
};

VClass* UseIt() {
#ifdef NO_CONSTRUCTOR
    MakeObject<Thing>("text")->Retain();
#endif
#ifdef IGNORED
    MakeObject<Thing>();
#endif
    return Thing::TheClass();
}
