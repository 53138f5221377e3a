#include "foundation/messaging/CmdEvent.h"

namespace VFoundation {

CmdEvent::CmdEvent(long commandID, SValue const& value, ICmdListener* listener)
    : m_commandID(narrow_cast<std::int32_t>(commandID)), m_value(value), m_listener(listener) {
}

CmdEvent::~CmdEvent() = default;

} // namespace VFoundation
