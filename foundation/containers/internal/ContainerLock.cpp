#include "foundation/containers/internal/ContainerLock.h"

#include <functional>
#include <utility>

namespace VFoundation {

constinit thread_local ContainerLock* ContainerLock::s_innermost = nullptr;
constinit thread_local ContainerLock::Releasing const* ContainerLock::s_releasing = nullptr;

ContainerLock::Releasing::Releasing(VCriticalSection const* section) noexcept
    : m_section(section), m_outer(s_releasing) {
    s_releasing = this;
}

ContainerLock::Releasing::~Releasing() {
    s_releasing = m_outer;
}

void ContainerLock::Enter() {
    m_section->Retain();
    if (!m_section->TryCriticalSection(0)) {
        LeaveOthers();
        m_section->EnterCriticalSection();
    }
    m_outer = std::exchange(s_innermost, this);
}

void ContainerLock::Leave() {
    s_innermost = m_outer;
    m_section->LeaveCriticalSection();
    EnterOthers();
    m_section->Release();
}

bool ContainerLock::IsReleasing(VCriticalSection const* section) noexcept {
    Releasing const* releasing = s_releasing;
    while (releasing && releasing->m_section != section) {
        releasing = releasing->m_outer;
    }
    return releasing != nullptr;
}

void ContainerLock::LeaveOthers() noexcept {
    for (ContainerLock* lock = s_innermost; lock; lock = lock->m_outer) {
        if (!lock->m_leftFor && IsReleasing(lock->m_section)) {
            lock->m_leftFor = this;
            lock->m_section->LeaveCriticalSection();
        }
    }
}

/// In the order of their addresses, so that two threads that do so do not wait for each other.
void ContainerLock::EnterOthers() noexcept {
    for (;;) {
        ContainerLock* next = nullptr;
        for (ContainerLock* lock = s_innermost; lock; lock = lock->m_outer) {
            if (lock->m_leftFor == this && (!next || std::less<>()(lock->m_section, next->m_section))) {
                next = lock;
            }
        }
        if (!next) {
            return;
        }
        next->m_section->EnterCriticalSection();
        next->m_leftFor = nullptr;
    }
}

} // namespace VFoundation
