#include "foundation/messaging/CmdEvent.h"

#include "foundation/messaging/ICmdListener.h"

namespace VFoundation {

CmdEvent::CmdEvent(long id, SValue const& value, ICmdListener* listener)
    : m_id(narrow_cast<std::int32_t>(id)), m_value(value), m_listener(listener) {
}

CmdEvent::~CmdEvent() = default;

bool CmdEvent::Send() const {
    if (m_listener) {
        m_listener->CommandReceived(*this);
    }
    return m_listener != nullptr;
}

} // namespace VFoundation
