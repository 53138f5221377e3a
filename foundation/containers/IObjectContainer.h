#pragma once

#include "foundation/core/Export.h"

namespace VFoundation {

class VObject;

/// What code needs to walk or fill any container without knowing which one it is.
///
/// Ownership: see the container. Containers are counted objects: never delete one through this interface.
/// Threads: see the container.
class VFOUNDATION_API IObjectContainer {
  public:
    virtual ~IObjectContainer() = default;

    virtual long Count() const = 0;
    /// The element (borrowed); null out of range.
    virtual VObject* ObjectAtIndex(long index) const = 0;
    /// Appends and retains; false when the container could not grow.
    virtual bool AddObject(VObject const* object) = 0;
};

} // namespace VFoundation
