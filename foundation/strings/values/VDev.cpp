#include "foundation/strings/values/VDev.h"

namespace VFoundation {

VClass* VDev::ms_theClass = nullptr;

} // namespace VFoundation
