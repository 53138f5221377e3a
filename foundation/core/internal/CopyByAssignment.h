#pragma once

#include "foundation/core/VClass.h"
#include "foundation/core/VObjectRef.h"

namespace VFoundation::detail {

/// What `Copy()` returns for a class whose assignment copies the state: a new instance of the original's class
/// with the original assigned to it (owned), or null for a class without a factory. Nothing is lost when the
/// assignment throws.
template <class T>
T* CopyByAssignment(T const& original) {
    auto copy = VObjectRef<T>::Adopt(static_cast<T*>(original.Class()->NewInstance()));
    if (copy) {
        *copy = original;
    }
    return copy.Detach();
}

} // namespace VFoundation::detail
