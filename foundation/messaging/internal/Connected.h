#pragma once

#include "foundation/core/VObject.h"
#include "foundation/messaging/internal/CallGate.h"

namespace VFoundation::detail {

/// What a `ScopedConnection` holds. It counts as a plain `VObject`: it has no class of its own. Internal.
class Connected : public VObject {
  public:
    Connected() : VObject(nullptr) {}
    Connected(Connected const&) = delete;
    Connected& operator=(Connected const&) = delete;

    /// Called once.
    virtual void Disconnect() = 0;
    /// Waits for running calls, after `Disconnect`.
    virtual void Wait() noexcept = 0;
};

} // namespace VFoundation::detail
