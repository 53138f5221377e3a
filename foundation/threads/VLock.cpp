#include "foundation/threads/VLock.h"

#include "foundation/log/VLog.h"
#include "foundation/threads/internal/LockWord.h"

#include <cerrno>

namespace VFoundation {

VClass* VLock::ms_theClass = nullptr;

VLock* VLock::New() {
    return new VLock();
}

bool VLock::TryLock(int milliseconds) {
    bool const taken = TakeLockWord(m_state, milliseconds);
    m_locked.store(taken, std::memory_order_relaxed);
    return taken;
}

void VLock::Unlock() {
    m_locked.store(false, std::memory_order_relaxed);
    if (!FreeLockWord(m_state)) {
        VLog::TraceDebug("Semaphore release: %i\n", EPERM);
    }
}

} // namespace VFoundation
