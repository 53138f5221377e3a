#include "foundation/containers/VObjectStack.h"

namespace VFoundation {

VClass* VObjectStack::ms_theClass = nullptr;

VObjectStack::VObjectStack(VClass* cls) : Registered(cls) {
}

VObject* VObjectStack::Pop() {
    VObject* const top = ObjectAtTopOfStack();
    if (top) {
        top->Retain();
        m_array.RemoveObjectAtIndex(m_array.Count() - 1);
    }
    return top;
}

VObject* VObjectStack::ObjectAtTopOfStack() const {
    return m_array.ObjectAtIndex(m_array.Count() - 1);
}

} // namespace VFoundation
