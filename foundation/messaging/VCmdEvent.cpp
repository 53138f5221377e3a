#include "foundation/messaging/VCmdEvent.h"

namespace VFoundation {

VClass* VCmdEvent::ms_theClass = nullptr;

VCmdEvent::VCmdEvent(VClass* cls) : Registered(cls, 0), m_command(CmdEvent::kNoCommandID, SValue(), nullptr) {
}

VCmdEvent::~VCmdEvent() = default;

VCmdEvent* VCmdEvent::New() {
    return new VCmdEvent();
}

} // namespace VFoundation
