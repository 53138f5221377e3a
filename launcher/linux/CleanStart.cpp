#include "launcher/linux/CleanStart.h"

#include "launcher/linux/UniqueFd.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <grp.h>
#include <sched.h>
#include <sys/personality.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace Launcher {

namespace {

constexpr pid_t kFirstProcess = 1;
constexpr int kOwnProcess = 1; // IOPRIO_WHO_PROCESS, which no header of the C library has

class Trace {
  public:
    explicit Trace(int descriptor) : m_descriptor(descriptor) {}

    void Require(bool isDone, char const* what) const {
        if (!isDone) {
            ::dprintf(m_descriptor, "Could not reset the %s: %s\n", what, std::strerror(errno));
        }
    }

  private:
    int m_descriptor;
};

// A limit that may not be raised as far as wanted is raised as far as it may be.
bool CopyLimit(__rlimit_resource resource) {
    rlimit wanted{};
    rlimit own{};
    if (::prlimit(kFirstProcess, resource, nullptr, &wanted) != 0 || ::getrlimit(resource, &own) != 0) {
        return false;
    }
    if (::setrlimit(resource, &wanted) == 0) {
        return true;
    }
    int const error = errno;
    own.rlim_cur = std::min(wanted.rlim_cur, own.rlim_max);
    ::setrlimit(resource, &own);
    errno = error;
    return false;
}

bool CopyLimits() {
    int error = 0;
    for (int i = 0; i < RLIMIT_NLIMITS; ++i) {
        if (!CopyLimit(static_cast<__rlimit_resource>(i))) {
            error = errno;
        }
    }
    errno = error;
    return error == 0;
}

bool CopyProcessors() {
    cpu_set_t processors;
    return ::sched_getaffinity(kFirstProcess, sizeof(processors), &processors) == 0 &&
           ::sched_setaffinity(0, sizeof(processors), &processors) == 0;
}

bool CopyMemoryScore() {
    char score[16];
    UniqueFd const first(::open("/proc/1/oom_score_adj", O_RDONLY | O_CLOEXEC));
    UniqueFd const own(::open("/proc/self/oom_score_adj", O_WRONLY | O_CLOEXEC));
    ssize_t const length = ::read(first.Get(), score, sizeof(score));
    return length > 0 && ::write(own.Get(), score, static_cast<std::size_t>(length)) == length;
}

} // namespace

void ResetInheritedState(int trace) {
    Trace const traced(trace);
    sched_param const ordinary{};
    traced.Require(CopyLimits(), "limits");
    traced.Require(::sched_setscheduler(0, SCHED_OTHER, &ordinary) == 0, "scheduling");
    traced.Require(::setpriority(PRIO_PROCESS, 0, 0) == 0, "priority");
    traced.Require(::syscall(SYS_ioprio_set, kOwnProcess, 0, 0) == 0, "priority of input and output");
    traced.Require(CopyProcessors(), "processors");
    traced.Require(CopyMemoryScore(), "out-of-memory score");
    traced.Require(::personality(PER_LINUX) >= 0, "personality");
    traced.Require(::initgroups("root", 0) == 0, "groups");
    ::umask(S_IWGRP | S_IWOTH);
}

} // namespace Launcher
