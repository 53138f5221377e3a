#pragma once

namespace VFoundation {

/// What a `VNotification` is handed around as where only its identity matters.
///
/// Ownership: of the object behind it; counted objects are never deleted through this interface.
/// Threads: nothing to share.
class INotification {
  public:
    virtual ~INotification() = default;
};

} // namespace VFoundation
