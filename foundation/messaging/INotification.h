#pragma once

namespace VFoundation {

/// A notification as those see it who only hand it on; `VNotification` is what there is behind it.
///
/// Ownership: by the reference count of the object behind it.
/// Threads: none of its own.
class INotification {
  public:
    virtual ~INotification() = default;
};

} // namespace VFoundation
