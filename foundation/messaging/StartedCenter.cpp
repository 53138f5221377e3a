#include "foundation/messaging/StartedCenter.h"

#include "foundation/threads/internal/WithoutThrowing.h"

namespace VFoundation {

StartedCenter::StartedCenter(char const* name, int capacity, long sleepMilliseconds)
    : m_center(MakeObject<VMessageCenter>(capacity)) {
    m_center->StartCenter(name, sleepMilliseconds);
}

StartedCenter::~StartedCenter() {
    WithoutThrowing([this] { m_center->StopCenter(); });
}

} // namespace VFoundation
