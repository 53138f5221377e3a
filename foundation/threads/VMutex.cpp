#include "foundation/threads/VMutex.h"

namespace VFoundation {

VClass* VMutex::ms_theClass = nullptr;

VMutex* VMutex::New() {
    return new VMutex();
}

} // namespace VFoundation
