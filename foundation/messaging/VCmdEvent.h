#pragma once

#include "foundation/messaging/CmdEvent.h"
#include "foundation/messaging/VEvent.h"

namespace VFoundation {

/// A command as an event.
///
/// Ownership: retains its object and its attachment; borrows the command's listener.
/// Threads: one thread at a time.
class VCmdEvent : public Registered<VCmdEvent, VEvent> {
  public:
    static constexpr char const* kClassName = "VCmdEvent";
    static VClass* ms_theClass;

    /// Event id 0; the command has id -1, no value and no listener.
    explicit VCmdEvent(VClass* cls = nullptr);
    VCmdEvent(VCmdEvent const&) = delete;
    VCmdEvent& operator=(VCmdEvent const&) = delete;
    ~VCmdEvent() override;
    static VCmdEvent* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    CmdEvent& Command() noexcept { return m_command; }
    CmdEvent const& Command() const noexcept { return m_command; }
    /// An object kept for as long as the command; null at first.
    VObject* Attachment() const noexcept { return m_attachment.Get(); }
    void SetAttachment(VObject* object) { m_attachment.Exchange(object); }

  private:
    CmdEvent m_command;
    VObjectRef<VObject> m_attachment;
};

} // namespace VFoundation
