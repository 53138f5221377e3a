#include "foundation/threads/VCriticalSection.h"

#include "foundation/threads/VThread.h"
#include "foundation/threads/internal/LockWord.h"

#include <cerrno>

namespace VFoundation {

VClass* VCriticalSection::ms_theClass = nullptr;

namespace {

std::uintptr_t ThisThread() noexcept {
    return static_cast<std::uintptr_t>(VThread::GetCurrentThreadID());
}

} // namespace

VCriticalSection* VCriticalSection::New() {
    return new VCriticalSection();
}

long VCriticalSection::EnterCriticalSection() const {
    return TryCriticalSection(-1) ? 0 : EINVAL;
}

bool VCriticalSection::TryCriticalSection(long milliseconds) const {
    std::uintptr_t const self = ThisThread();
    if (m_owner.load(std::memory_order_relaxed) == self) {
        ++m_entries;
        return true;
    }
    if (!TakeLockWord(m_word, milliseconds)) {
        return false;
    }
    m_owner.store(self, std::memory_order_relaxed);
    m_entries = 1;
    return true;
}

long VCriticalSection::LeaveCriticalSection() const {
    if (m_owner.load(std::memory_order_relaxed) != ThisThread()) {
        return EPERM;
    }
    if (--m_entries == 0) {
        m_owner.store(0, std::memory_order_relaxed);
        FreeLockWord(m_word);
    }
    return 0;
}

} // namespace VFoundation
