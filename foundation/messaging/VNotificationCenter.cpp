#include "foundation/messaging/VNotificationCenter.h"

#include "foundation/core/internal/ClassOwned.h"
#include "foundation/messaging/VNotification.h"

#include <new>
#include <utility>

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
    return detail::MakeOnce(ms_defaultNotificationCenter, &New);
}

void VNotificationCenter::DeleteDefaultCenter() {
    detail::ReleaseAndClear(ms_defaultNotificationCenter);
}

bool VNotificationCenter::AddObserver(VObject* observer, Callback callback, VString const* name,
                                      VObject* about) {
    if (!observer || !callback) {
        return false;
    }
    try {
        auto tuple = VObjectRef<VNotificationTuple>::Adopt(VNotificationTuple::New());
        tuple->Set(observer, callback, name, about);
        detail::MutexLock const lock(m_lock);
        m_registrations.push_back(std::move(tuple));
        return true;
    } catch (std::bad_alloc const&) {
        return false;
    }
}

void VNotificationCenter::RemoveObserver(VObject* observer) {
    detail::MutexLock const lock(m_lock);
    std::erase_if(m_registrations, [observer](VObjectRef<VNotificationTuple> const& tuple) {
        bool const ends = tuple->IsOf(observer);
        if (ends) {
            tuple->End(); // for postings that have it in their list already
        }
        return ends;
    });
}

void VNotificationCenter::PostNotification(VNotification* notification) {
    if (!notification) {
        return;
    }
    VObjectRef<VNotification> const held(notification);
    Registrations concerned;
    {
        detail::MutexLock const lock(m_lock);
        for (auto const& tuple : m_registrations) {
            if (tuple->Matches(*notification)) {
                concerned.push_back(tuple);
            }
        }
    }
    for (auto const& tuple : concerned) {
        tuple->Deliver(notification);
    }
}

} // namespace VFoundation
