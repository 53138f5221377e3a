#include "foundation/messaging/VNotification.h"

#include "foundation/containers/VDictionary.h"

namespace VFoundation {

VClass* VNotification::ms_theClass = nullptr;

VNotification::VNotification(VClass* cls) : Registered(cls) {
}

VNotification::~VNotification() = default;

VNotification* VNotification::New() {
    return new VNotification();
}

void VNotification::SetName(VString const& name) {
    m_name = name;
}

void VNotification::SetUserInfo(VDictionary* info) {
    m_userInfo.Exchange(info);
}

} // namespace VFoundation
