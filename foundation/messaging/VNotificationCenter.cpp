#include "foundation/messaging/VNotificationCenter.h"

#include "foundation/core/VObjectRef.h"
#include "foundation/messaging/VNotification.h"

namespace VFoundation {

VClass* VNotificationCenter::ms_theClass = nullptr;
std::atomic<VNotificationCenter*> VNotificationCenter::ms_defaultNotificationCenter{nullptr};

VNotificationCenter::VNotificationCenter(VClass* cls) : Registered(cls) {
}

VNotificationCenter::~VNotificationCenter() = default;

VNotificationCenter* VNotificationCenter::New() {
    return new VNotificationCenter();
}

void VNotificationCenter::UninitializeClass() {
    DeleteDefaultCenter();
}

VNotificationCenter* VNotificationCenter::DefaultCenter() {
    VNotificationCenter* center = ms_defaultNotificationCenter.load();
    if (center) {
        return center;
    }
    auto made = VObjectRef<VNotificationCenter>::Adopt(New());
    if (ms_defaultNotificationCenter.compare_exchange_strong(center, made.Get())) {
        center = made.Detach();
    }
    return center;
}

void VNotificationCenter::DeleteDefaultCenter() {
    VObjectRef<VNotificationCenter>::Adopt(ms_defaultNotificationCenter.exchange(nullptr));
}

void VNotificationCenter::AddObserver(VObject* observer, Handler handler, VString const* name,
                                      VObject* about) {
    if (!observer || !handler) {
        return;
    }
    auto const tuple = VObjectRef<VNotificationTuple>::Adopt(VNotificationTuple::New());
    tuple->Set(observer, handler, name, about);
    std::lock_guard const lock(m_lock);
    m_registrations.AddObject(tuple.Get());
}

void VNotificationCenter::RemoveObserver(VObject* observer) {
    std::lock_guard const lock(m_lock);
    for (long index = m_registrations.Count() - 1; observer && index >= 0; --index) {
        VNotificationTuple* const tuple = m_registrations.ObjectAtIndexTyped(index);
        if (tuple->Observer() == observer) {
            tuple->End(); // for the posts that are at it
            m_registrations.RemoveObjectAtIndex(index);
        }
    }
}

void VNotificationCenter::PostNotification(VNotification* notification) {
    if (!notification) {
        return;
    }
    VObjectRef<VNotification> const keep(notification);
    VObjectArrayTmpl<VNotificationTuple> addressed;
    {
        std::lock_guard const lock(m_lock);
        for (long index = 0; index < m_registrations.Count(); ++index) {
            VNotificationTuple* const tuple = m_registrations.ObjectAtIndexTyped(index);
            if (tuple->Matches(*notification)) {
                addressed.AddObject(tuple);
            }
        }
    }
    for (long index = 0; index < addressed.Count(); ++index) {
        addressed.ObjectAtIndexTyped(index)->Deliver(notification);
    }
}

} // namespace VFoundation
