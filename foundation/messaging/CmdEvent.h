#pragma once

#include "foundation/strings/VValue.h"

#include <cstdint>

namespace VFoundation {

class ICmdListener;

/// A command with a value, and whom it is for. A plain value, which is copied freely; `VCmdEvent` is its
/// counted form.
///
/// Ownership: holds its value; borrows the listener.
/// Threads: one thread at a time.
class CmdEvent {
  public:
    /// The id keeps its low 32 bits. The listener may be null.
    CmdEvent(long id, SValue const& value, ICmdListener* listener);
    CmdEvent(CmdEvent const& other) = default;
    CmdEvent& operator=(CmdEvent const& other) = default;
    virtual ~CmdEvent();

    long CommandID() const noexcept { return m_id; }
    void SetCommandID(long id) noexcept { m_id = narrow_cast<std::int32_t>(id); }
    VValue& Value() noexcept { return m_value; }
    VValue const& Value() const noexcept { return m_value; }
    ICmdListener* Listener() const noexcept { return m_listener; }
    void SetListener(ICmdListener* listener) noexcept { m_listener = listener; }

    /// Hands the event to its listener; false when there is none.
    bool Send() const;

  private:
    std::int32_t m_id;
    VValue m_value;
    ICmdListener* m_listener;
};

} // namespace VFoundation
