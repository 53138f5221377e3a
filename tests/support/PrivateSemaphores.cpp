#include "tests/support/PrivateSemaphores.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <semaphore.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

// Stands before the system's functions in every test program. The semaphores that a program opens by name are its
// own and that of the processes it forks: two runs at once do not disturb each other, and none is left in the system.
// No `operator new`, which tests let fail.

std::atomic<int> testing_support::s_openSemaphores{0};
std::atomic<bool> testing_support::s_refusesSemaphores{false};

namespace {

constexpr std::size_t kLongestName = 250; // of the system

struct Known {
    Known* next;
    sem_t* semaphore;
    uid_t owner;
    mode_t mode;
    char name[kLongestName + 1];
};
std::mutex s_lock;
Known* s_first = nullptr;

/// The place of the name, which may begin with '/', in the list, or its end.
Known** Find(std::string_view name) {
    name.remove_prefix(name.substr(0, 1) == "/" ? 1 : 0);
    Known** link = &s_first;
    while (*link && name != (*link)->name) {
        link = &(*link)->next;
    }
    return link;
}

template <class Function>
Function* Original(char const* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

extern "C" sem_t* sem_open(char const* name, int flags, ...) noexcept {
    va_list arguments;
    va_start(arguments, flags);
    mode_t const mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : 0;
    unsigned const value = (flags & O_CREAT) != 0 ? va_arg(arguments, unsigned) : 0;
    va_end(arguments);
    if (testing_support::s_refusesSemaphores) {
        errno = EMFILE;
        return SEM_FAILED;
    }
    std::lock_guard const lock(s_lock);
    Known** const link = Find(name);
    if (*link) {
        if (geteuid() != (*link)->owner && ((*link)->mode & S_IRWXO) == 0) {
            errno = EACCES;
            return SEM_FAILED;
        }
        ++testing_support::s_openSemaphores;
        return (*link)->semaphore;
    }
    // What the system would refuse it refuses with this name too. What it makes loses the name at once.
    char own[2 * kLongestName];
    std::snprintf(own, sizeof own, *name && std::strcmp(name, "/") != 0 ? "%s.%i" : "%s", name, getpid());
    sem_t* const semaphore = Original<decltype(sem_open)>("sem_open")(own, flags, mode, value);
    if (semaphore != SEM_FAILED) {
        Original<decltype(sem_unlink)>("sem_unlink")(own);
        *link = static_cast<Known*>(std::calloc(1, sizeof(Known)));
        (*link)->semaphore = semaphore;
        (*link)->owner = geteuid();
        (*link)->mode = mode;
        std::strncpy((*link)->name, name + (*name == '/' ? 1 : 0), kLongestName);
        ++testing_support::s_openSemaphores;
    }
    return semaphore;
}

/// It stays for the next open of its name, with its units, as the system's would.
extern "C" int sem_close(sem_t*) noexcept {
    --testing_support::s_openSemaphores;
    return 0;
}

extern "C" int sem_unlink(char const* name) noexcept {
    std::lock_guard const lock(s_lock);
    Known** const link = Find(name);
    Known* const known = *link;
    if (!known) {
        errno = ENOENT;
        return -1;
    }
    *link = known->next;
    std::free(known);
    return 0;
}
