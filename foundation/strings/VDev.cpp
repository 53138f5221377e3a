#include "foundation/strings/VDev.h"

namespace VFoundation {

VClass* VDev::ms_theClass = nullptr;

} // namespace VFoundation
