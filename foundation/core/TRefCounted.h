#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VClass.h"

namespace VFoundation {

/// The retention policy of containers that hold counted references: they retain what they store and release
/// what they drop. Stateless; used as a template argument.
template <class T>
class VFOUNDATION_API TRefCounted {
  public:
    static void Retain(T const* object) { object->Retain(); }
    static void Release(T const* object) { object->Release(); }
    /// The registered name of `T`.
    static char const* ClassName() { return T::TheClass()->Name(); }
};

} // namespace VFoundation
