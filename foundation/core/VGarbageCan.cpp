#include "foundation/core/VGarbageCan.h"

namespace VFoundation {

VClass* VGarbageCan::ms_theClass = nullptr;

VGarbageCan::VGarbageCan(VClass* cls, int capacity)
    : Registered(cls), m_objects(static_cast<unsigned long>(static_cast<long>(capacity))) {
}

VGarbageCan::~VGarbageCan() {
    m_isEnding = true; // destructors of parked objects may come back with more
    m_objects.RemoveAllObjects();
}

bool VGarbageCan::OpenGarbageCan() {
    return m_openCount.fetch_add(1) + 1 > 0;
}

bool VGarbageCan::CloseGarbageCan() {
    std::int32_t count = m_openCount.load();
    while (count >= 1) {
        if (m_openCount.compare_exchange_weak(count, count - 1)) {
            return true;
        }
    }
    return false;
}

bool VGarbageCan::AddGarbageToCan(VObject* object) {
    return !m_isEnding && m_objects.Push(object);
}

VGarbageCan::Context::Context(VGarbageCan* can) {
    m_can.Exchange(can);
    if (can) {
        can->OpenGarbageCan();
    }
}

VGarbageCan::Context::~Context() {
    if (m_can) {
        m_can->CloseGarbageCan();
    }
}

} // namespace VFoundation
