#pragma once

#include "foundation/core/Export.h"

namespace VFoundation {

/// A notification for code that only hands it on; the object is a `VNotification`.
///
/// Ownership: by the reference count of that object.
/// Threads: none of its own.
class VFOUNDATION_API INotification {
  public:
    virtual ~INotification() = default;
};

} // namespace VFoundation
