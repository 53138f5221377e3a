#include "foundation/messaging/StartedCenter.h"

#include "foundation/strings/VString.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <atomic>
#include <semaphore.h>
#include <unistd.h>

namespace VFoundation {

StartedCenter::StartedCenter(int capacity, long sleepMilliseconds)
    : m_center(MakeObject<VMessageCenter>(capacity)) {
    static std::atomic<unsigned long> s_made{0};
    VString name("vfoundation-");
    name << static_cast<long>(::getpid()) << '-' << ++s_made;
    m_center->StartCenter(name.CString(), sleepMilliseconds);
    ::sem_unlink(name.CString()); // open in this process, so it is not needed any more
}

StartedCenter::StartedCenter(char const* name, int capacity, long sleepMilliseconds)
    : m_center(MakeObject<VMessageCenter>(capacity)) {
    m_center->StartCenter(name, sleepMilliseconds);
}

StartedCenter::~StartedCenter() {
    WithoutThrowing([this] { m_center->StopCenter(); });
}

} // namespace VFoundation
