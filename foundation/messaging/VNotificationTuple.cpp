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

void VNotificationTuple::Set(VObject* observer, Callback callback, VString const* name, VObject const* about,
                             VObject* kept) {
    m_kept.Exchange(kept);
    m_observer = observer;
    m_callback = callback;
    m_anyName = name == nullptr;
    if (name) {
        m_name = *name;
    }
    m_about = about;
}

bool VNotificationTuple::Matches(VNotification const& notification) const {
    return (m_anyName || m_name == notification.Name()) && (!m_about || m_about == notification.Object());
}

void VNotificationTuple::Deliver(VNotification* notification) const {
    if (m_callback && !m_ended.load(std::memory_order_relaxed)) {
        m_callback(m_observer, notification);
    }
}

} // namespace VFoundation
