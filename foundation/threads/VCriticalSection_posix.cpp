#include "foundation/threads/VCriticalSection.h"

#include <ctime>

namespace VFoundation {

VCriticalSection::VCriticalSection(VClass* cls) : Registered(cls) {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&m_region, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

VCriticalSection::~VCriticalSection() {
    pthread_mutex_destroy(&m_region);
}

long VCriticalSection::EnterCriticalSection() const {
    return pthread_mutex_lock(&m_region);
}

bool VCriticalSection::EnterIfFree() const {
    return pthread_mutex_trylock(&m_region) == 0;
}

bool VCriticalSection::EnterWithin(long milliseconds) const {
    timespec until{};
    clock_gettime(CLOCK_REALTIME, &until);
    until.tv_sec += milliseconds / 1000;
    until.tv_nsec += milliseconds % 1000 * 1'000'000;
    if (until.tv_nsec >= 1'000'000'000) {
        until.tv_sec += 1;
        until.tv_nsec -= 1'000'000'000;
    }
    return pthread_mutex_timedlock(&m_region, &until) == 0;
}

long VCriticalSection::LeaveCriticalSection() const {
    return pthread_mutex_unlock(&m_region);
}

} // namespace VFoundation
