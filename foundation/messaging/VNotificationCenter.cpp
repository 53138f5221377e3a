#include "foundation/messaging/VNotificationCenter.h"

#include "foundation/core/VException.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/messaging/VNotification.h"

#include <new>

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
        auto const tuple = VObjectRef<VNotificationTuple>::Adopt(VNotificationTuple::New());
        tuple->Set(observer, callback, name, about, kept);
        detail::MutexLock const lock(m_lock);
        return m_registrations.AddObject(tuple.Get());
    } catch (std::bad_alloc const&) { // no memory, as below
    } catch (VException const&) {
    }
    return false;
}

void VNotificationCenter::RemoveObserver(VObject* observer) {
    detail::MutexLock const lock(m_lock);
    for (long index = m_registrations.Count() - 1; index >= 0; --index) {
        VNotificationTuple* const tuple = m_registrations.ObjectAtIndexTyped(index);
        if (tuple->IsOf(observer)) {
            tuple->End(); // for postings that have it in their list already
            m_registrations.RemoveObjectAtIndex(index);
        }
    }
}

void VNotificationCenter::PostNotification(VNotification* notification) {
    if (!notification) {
        return;
    }
    VObjectRef<VNotification> const held(notification);
    auto const concerned = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
    {
        detail::MutexLock const lock(m_lock);
        for (long index = 0; index < m_registrations.Count(); ++index) {
            VNotificationTuple* const tuple = m_registrations.ObjectAtIndexTyped(index);
            if (tuple->Matches(*notification)) {
                concerned->AddObject(tuple);
            }
        }
    }
    for (long index = 0; index < concerned->Count(); ++index) {
        static_cast<VNotificationTuple*>(concerned->ObjectAtIndex(index))->Deliver(notification);
    }
}

} // namespace VFoundation
