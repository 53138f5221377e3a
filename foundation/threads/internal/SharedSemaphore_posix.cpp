#include "foundation/threads/internal/SharedSemaphore.h"

#include <cerrno>
#include <fcntl.h>
#include <mutex>
#include <new>

namespace VFoundation {

namespace {

constexpr std::uint32_t kSleeperBit = 1;
constexpr std::uint32_t kOnePost = 2;
constexpr mode_t kEveryUser = 0777;

constinit std::mutex s_tableLock;
constinit OpenSemaphore* s_table = nullptr;

} // namespace

OpenSemaphore* OpenSemaphore::Open(char const* name, int& error) {
    std::lock_guard const lock(s_tableLock);
    sem_t* const handle = sem_open(name, O_CREAT, kEveryUser, 0);
    if (handle == SEM_FAILED) {
        error = errno;
        return nullptr;
    }
    // The system gives out the same address for as long as this process has the semaphore open, and another
    // one for a name that was removed and made again.
    OpenSemaphore* semaphore = s_table;
    while (semaphore && semaphore->m_handle != handle) {
        semaphore = semaphore->m_next;
    }
    if (!semaphore) {
        semaphore = new (std::nothrow) OpenSemaphore(handle);
        if (!semaphore) {
            sem_close(handle);
            error = ENOMEM;
            return nullptr;
        }
        semaphore->m_next = s_table;
        s_table = semaphore;
    }
    ++semaphore->m_references;
    return semaphore;
}

void OpenSemaphore::Close() {
    std::lock_guard const lock(s_tableLock);
    sem_close(m_handle); // the system counts how often it was opened, as we do
    if (--m_references > 0) {
        return;
    }
    OpenSemaphore** link = &s_table;
    while (*link != this) {
        link = &(*link)->m_next;
    }
    *link = m_next;
    delete this;
}

bool OpenSemaphore::Post() {
    if (sem_post(m_handle) != 0) {
        return false;
    }
    if (m_bell.fetch_add(kOnePost) & kSleeperBit) {
        m_bell.fetch_and(~kSleeperBit);
        FutexWakeAll(m_bell);
    }
    return true;
}

bool OpenSemaphore::TryWait() {
    return sem_trywait(m_handle) == 0;
}

bool OpenSemaphore::Wait() {
    int result = sem_wait(m_handle);
    while (result != 0 && errno == EINTR) {
        result = sem_wait(m_handle);
    }
    return result == 0;
}

bool OpenSemaphore::HasUnits() {
    int units = 0;
    return sem_getvalue(m_handle, &units) == 0 && units > 0;
}

bool OpenSemaphore::SleepUntilPosted(MonotonicTime deadline) {
    for (;;) {
        std::uint32_t const seen = m_bell.fetch_or(kSleeperBit) | kSleeperBit;
        if (HasUnits()) {
            return true;
        }
        if (!FutexWait(m_bell, seen, &deadline)) {
            return false;
        }
    }
}

} // namespace VFoundation
