#include "foundation/messaging/VMessage.h"

namespace VFoundation {

VClass* VMessage::ms_theClass = nullptr;

VMessage::VMessage(VClass* cls) : Registered(cls) {
}

VMessage::VMessage(VMessage const& other) : Registered(nullptr) {
    *this = other;
}

VMessage::~VMessage() = default;

VMessage* VMessage::New() {
    return new VMessage();
}

VMessage& VMessage::operator=(VMessage const& other) {
    if (&other != this) {
        m_id = other.m_id;
        m_first = other.m_first;
        m_second = other.m_second;
    }
    return *this;
}

VMessage* VMessage::Copy() const {
    return new VMessage(*this);
}

void VMessage::Clear() {
    m_id = kNoID;
    m_first.SetValueToUnknown();
    m_second.SetValueToUnknown();
}

bool VMessage::Matches(VMessage const* other) const {
    return other && m_first.Type() == other->m_first.Type() && m_second.Type() == other->m_second.Type();
}

bool VMessage::Receivable(VMessage const* incoming) const {
    auto const fits = [](SValue const& given, SValue const& expected) {
        return given.Type() == SValue::kUnknown || given.Type() == expected.Type();
    };
    return incoming && fits(incoming->m_first, m_first) && fits(incoming->m_second, m_second);
}

} // namespace VFoundation
