#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/NarrowCast.h"
#include "foundation/strings/values/VValue.h"

#include <cstdint>

namespace VFoundation {

class ICmdListener;

/// A command with its value and the listener it is addressed to. A plain value: copy it, derive from it.
/// `VCmdEvent` carries one where an object is needed.
///
/// Ownership: copies the value (as `SValue`), borrows the listener.
/// Threads: one thread at a time.
class VFOUNDATION_API CmdEvent {
  public:
    static constexpr long kNoCommandID = -1;

    CmdEvent(long commandID, SValue const& value, ICmdListener* listener);
    CmdEvent(CmdEvent const& other) = default;
    CmdEvent& operator=(CmdEvent const& other) = default;
    virtual ~CmdEvent();

    /// 32 bits.
    long CommandID() const noexcept { return m_commandID; }
    void SetCommandID(long commandID) noexcept { m_commandID = narrow_cast<std::int32_t>(commandID); }
    VValue& Value() noexcept { return m_value; }
    VValue const& Value() const noexcept { return m_value; }
    ICmdListener* Listener() const noexcept { return m_listener; }
    void SetListener(ICmdListener* listener) noexcept { m_listener = listener; }

  private:
    std::int32_t m_commandID;
    VValue m_value;
    ICmdListener* m_listener;
};

} // namespace VFoundation
