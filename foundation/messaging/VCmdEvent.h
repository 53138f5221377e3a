#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/messaging/CmdEvent.h"
#include "foundation/messaging/VEvent.h"

namespace VFoundation {

/// A command as an event: an object that can be queued and kept, with the command in it. In XML it is an
/// event; the command is not written.
///
/// Ownership: retains the attachment; the command has its own rules.
/// Threads: one thread at a time.
class VFOUNDATION_API VCmdEvent : public Registered<VCmdEvent, VEvent> {
  public:
    static constexpr char const* kClassName = "VCmdEvent";
    static VClass* ms_theClass;

    /// With event id 0 and a command of id -1, without value and listener.
    explicit VCmdEvent(VClass* cls = nullptr);
    ~VCmdEvent() override;
    [[nodiscard]] static VCmdEvent* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    CmdEvent& Command() noexcept { return m_command; }
    CmdEvent const& Command() const noexcept { return m_command; }

    /// An object that the command is about, or null.
    VObject* Attachment() const noexcept { return m_attachment.Get(); }
    void SetAttachment(VObject* object) { m_attachment.Exchange(object); }

  private:
    CmdEvent m_command;
    VObjectRef<VObject> m_attachment;
};

} // namespace VFoundation
