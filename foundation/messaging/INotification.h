#pragma once

namespace VFoundation {

/// A notification for code that only hands it on; the object is a `VNotification`.
///
/// Ownership: by the reference count of that object.
/// Threads: none of its own.
class INotification {
  public:
    virtual ~INotification() = default;
};

} // namespace VFoundation
