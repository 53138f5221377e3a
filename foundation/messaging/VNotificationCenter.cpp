#include "foundation/messaging/VNotificationCenter.h"

#include "foundation/core/internal/ClassOwned.h"
#include "foundation/messaging/VNotification.h"

#include <algorithm>
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
    return observer && callback && Register(observer, callback, name, about, nullptr);
}

bool VNotificationCenter::Register(VObject* observer, Callback callback, VString const* name, VObject* about,
                                   VObject* kept) {
    try {
        auto tuple = VObjectRef<VNotificationTuple>::Adopt(VNotificationTuple::New());
        tuple->Set(observer, callback, name, about, kept);
        detail::MutexLock const lock(m_lock);
        m_registrations.push_back(std::move(tuple));
        return true;
    } catch (std::bad_alloc const&) {
        return false;
    }
}

void VNotificationCenter::RemoveObserver(VObject* observer) {
    while (TakeRegistrationOf(observer)) { // and release it without the lock: it may keep objects of the user
    }
}

/// Ends and takes out one registration of the observer; null when there is none.
VObjectRef<VNotificationTuple> VNotificationCenter::TakeRegistrationOf(VObject* observer) {
    detail::MutexLock const lock(m_lock);
    auto const found = std::find_if(m_registrations.begin(), m_registrations.end(),
                                    [observer](auto const& tuple) { return tuple->IsOf(observer); });
    if (found == m_registrations.end()) {
        return {};
    }
    (*found)->End(); // for postings that have it in their list already
    VObjectRef<VNotificationTuple> taken = std::move(*found);
    m_registrations.erase(found);
    return taken;
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
