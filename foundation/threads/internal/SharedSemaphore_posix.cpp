#include "foundation/threads/internal/SharedSemaphore.h"

#include <cerrno>
#include <fcntl.h>
#include <new>

namespace VFoundation {

constinit detail::Mutex SharedSemaphore::ms_lock;
constinit SharedSemaphore* SharedSemaphore::ms_first = nullptr;

namespace {

constexpr std::uint32_t kSleeperBit = 1;
constexpr std::uint32_t kOnePost = 2;
constexpr mode_t kEveryUser = 0777;
/// A poster that is at work on another core posts again within some of these, sooner than a sleeper is woken.
constexpr int kLooksBeforeSleep = 100;

} // namespace

SharedSemaphore* SharedSemaphore::Open(char const* name, int& error) {
    detail::MutexLock const lock(ms_lock);
    sem_t* const handle = sem_open(name, O_CREAT, kEveryUser, 0);
    if (handle == SEM_FAILED) {
        error = errno;
        return nullptr;
    }
    // The system gives out the same address for as long as this process has the semaphore open, and another
    // one for a name that was removed and made again.
    SharedSemaphore* semaphore = ms_first;
    while (semaphore && semaphore->m_handle != handle) {
        semaphore = semaphore->m_next;
    }
    if (!semaphore) {
        semaphore = new (std::nothrow) SharedSemaphore(handle);
        if (!semaphore) {
            sem_close(handle);
            error = ENOMEM;
            return nullptr;
        }
        semaphore->m_next = ms_first;
        ms_first = semaphore;
    }
    ++semaphore->m_references;
    return semaphore;
}

void SharedSemaphore::Close() {
    detail::MutexLock const lock(ms_lock);
    sem_close(m_handle); // the system counts its opens, as `m_references` does
    if (--m_references > 0) {
        return;
    }
    SharedSemaphore** link = &ms_first;
    while (*link != this) {
        link = &(*link)->m_next;
    }
    *link = m_next;
    delete this;
}

bool SharedSemaphore::Post() {
    if (sem_post(m_handle) != 0) {
        return false;
    }
    if (m_posts.fetch_add(kOnePost) & kSleeperBit) {
        m_posts.fetch_and(~kSleeperBit);
        FutexWakeAll(m_posts);
    }
    return true;
}

bool SharedSemaphore::TryWait() {
    return sem_trywait(m_handle) == 0;
}

bool SharedSemaphore::Wait() {
    return sem_wait(m_handle) == 0;
}

bool SharedSemaphore::HasUnits() {
    int units = 0;
    return sem_getvalue(m_handle, &units) == 0 && units > 0;
}

bool SharedSemaphore::SleepUntilPosted(MonotonicTime deadline) {
    for (int look = 0; look < kLooksBeforeSleep; ++look) {
        if (HasUnits()) {
            return true;
        }
        PauseCore();
    }
    for (;;) {
        std::uint32_t const seen = m_posts.fetch_or(kSleeperBit) | kSleeperBit;
        if (HasUnits()) {
            return true;
        }
        if (!FutexWait(m_posts, seen, &deadline)) {
            return false;
        }
    }
}

} // namespace VFoundation
