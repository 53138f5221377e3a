#include "foundation/messaging/VNotificationTuple.h"

#include "foundation/messaging/VNotification.h"

namespace VFoundation {

VClass* VNotificationTuple::ms_theClass = nullptr;

VNotificationTuple::VNotificationTuple(VClass* cls) : Registered(cls) {
}

VNotificationTuple::~VNotificationTuple() = default;

VNotificationTuple* VNotificationTuple::New() {
    return new VNotificationTuple();
}

void VNotificationTuple::Set(VObject* observer, Handler handler, VString const* name, VObject* about) {
    m_handler = handler;
    m_anyName = !name;
    m_name = name ? name->CString() : nullptr;
    m_about = about;
    m_observer.store(observer);
}

bool VNotificationTuple::Matches(VNotification const& notification) const {
    return (m_anyName || m_name == notification.Name()) && (!m_about || m_about == notification.Object());
}

void VNotificationTuple::Deliver(VNotification* notification) const {
    if (VObject* const observer = Observer()) {
        m_handler(observer, notification);
    }
}

} // namespace VFoundation
