#include "foundation/containers/VObjectUndoStack.h"

namespace VFoundation {

VClass* VObjectUndoStack::ms_theClass = nullptr;

VObjectUndoStack::VObjectUndoStack(VClass* cls) : Registered(cls) {
}

} // namespace VFoundation
