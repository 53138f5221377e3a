#pragma once

#include "foundation/core/VObject.h"
#include "foundation/core/VObjectRef.h"

namespace VFoundation {

/// A new object (owned) of the class of `object`, with the value of `object` assigned; null when that class cannot be
/// made. Nothing leaks when the assignment throws.
template <class T>
T* CopyByAssignment(T const& object) {
    auto copy = VObjectRef<T>::Adopt(static_cast<T*>(object.VObject::Copy()));
    if (copy) {
        *copy = object;
    }
    return copy.Detach();
}

} // namespace VFoundation
