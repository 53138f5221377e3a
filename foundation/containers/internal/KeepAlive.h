#pragma once

#include "foundation/core/VObject.h"
#include "foundation/core/VObjectRef.h"

namespace VFoundation {

/// Holds an object over a call of code that may release its last reference, such as the destructor of an element. An
/// object without references is in its destructor already and is not held.
inline VObjectRef<VObject const> KeepAlive(VObject const& object) {
    return VObjectRef<VObject const>(object.RetainCount() > 0 ? &object : nullptr);
}

} // namespace VFoundation
