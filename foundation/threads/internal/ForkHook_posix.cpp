#include "foundation/threads/internal/ForkHook.h"

#include "foundation/core/Mutex.h"

#include <new>
#include <pthread.h>

namespace VFoundation {

namespace {

/// Held from before a fork until after it, so that the list stays as it is.
constinit detail::Mutex s_lock;
constinit ForkHook* s_hooks VFOUNDATION_GUARDED_BY(s_lock) = nullptr;
constinit bool s_isKnownToSystem VFOUNDATION_GUARDED_BY(s_lock) = false;

} // namespace

ForkHook::ForkHook(void* owner, Calls const& calls) : m_owner(owner), m_calls(calls) {
    detail::MutexLock const lock(s_lock);
    if (!s_isKnownToSystem && pthread_atfork(&BeforeFork, &InParent, &InChild) != 0) {
        throw std::bad_alloc();
    }
    s_isKnownToSystem = true;
    m_link = &s_hooks;
    m_next = s_hooks;
    if (m_next) {
        m_next->m_link = &m_next;
    }
    s_hooks = this;
}

ForkHook::~ForkHook() {
    detail::MutexLock const lock(s_lock);
    *m_link = m_next;
    if (m_next) {
        m_next->m_link = m_link;
    }
}

void ForkHook::CallAll(Call Calls::*which) VFOUNDATION_REQUIRES(s_lock) {
    for (ForkHook* hook = s_hooks; hook; hook = hook->m_next) {
        if (Call const call = hook->m_calls.*which) {
            call(hook->m_owner);
        }
    }
}

void ForkHook::BeforeFork() VFOUNDATION_THREAD_ATTRIBUTE(acquire_capability(s_lock)) {
    s_lock.Lock();
    CallAll(&Calls::before);
}

void ForkHook::InParent() VFOUNDATION_THREAD_ATTRIBUTE(release_capability(s_lock)) {
    CallAll(&Calls::inParent);
    s_lock.Unlock();
}

void ForkHook::InChild() VFOUNDATION_THREAD_ATTRIBUTE(release_capability(s_lock)) {
    CallAll(&Calls::inChild);
    s_lock.Unlock();
}

} // namespace VFoundation
