#pragma once

#include "foundation/core/Registered.h"

namespace VFoundation {

/// `object` as a `T`, when its class is `T` or derived from it; else null, as for null. For objects from files and
/// other places that may hold any class. A class that has no record has no instances either, so no record is made.
template <class T>
T* VObjectCast(VObject* object) {
    VClass const* const cls = LoadClassSlot(T::ms_theClass);
    return object && cls && object->IsKindOfClass(cls) ? static_cast<T*>(object) : nullptr;
}

/// The same for exactly the class `T`.
template <class T>
T* VObjectCastExact(VObject* object) {
    VClass const* const cls = LoadClassSlot(T::ms_theClass);
    return object && cls && object->IsMemberOfClass(cls) ? static_cast<T*>(object) : nullptr;
}

} // namespace VFoundation
