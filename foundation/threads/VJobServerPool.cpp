#include "foundation/threads/VJobServerPool.h"

namespace VFoundation {

VClass* VJobServerPool::ms_theClass = nullptr;

} // namespace VFoundation
