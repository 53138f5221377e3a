#include "foundation/containers/VObjectQueue.h"

namespace VFoundation {

VClass* VObjectQueue::ms_theClass = nullptr;

VObjectQueue::VObjectQueue(VClass* cls) : Registered(cls) {
}

} // namespace VFoundation
