#include "foundation/threads/VSemaphore.h"

#include "foundation/core/NarrowCast.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VThread.h"
#include "foundation/threads/internal/SharedSemaphore.h"

#include <cerrno>
#include <cstdio>
#include <new>

namespace VFoundation {

VClass* VSemaphore::ms_theClass = nullptr;

namespace {

constexpr long kStep = 5;
constexpr long kLastSteps = 1;
/// From here down the short steps are taken.
constexpr long kLastStepsBelow = 6;

struct Reason {
    int error;
    char const* line;
};

constexpr Reason kReasons[] = {
    {ENOENT, "reason: ENOENT\n"}, {EINTR, "reason: EINTR\n"},   {EACCES, "reason: EACCES\n"},
    {EEXIST, "reason: EEXIST\n"}, {EINVAL, "reason: EINVAL\n"}, {ENFILE, "reason: ENFILE\n"},
    {EMFILE, "reason: EMFILE\n"}, {ENOSPC, "reason: ENOSPC\n"}, {ENAMETOOLONG, "reason: ENAMETOOLONG\n"},
};

void ReportFailure(char const* name, long maxSignals, int error) {
    VLog::Trace("Error creating semaphore\n");
    std::fprintf(stderr, "Error creating semaphore named %s with max signals %li\n", name, maxSignals);
    for (Reason const& reason : kReasons) {
        if (reason.error == error) {
            std::fputs(reason.line, stderr);
        }
    }
}

/// A statistic, hence relaxed: what two threads add at once may count once.
void AddTo(std::atomic<std::uint32_t>& tally, long count) noexcept {
    tally.store(tally.load(std::memory_order_relaxed) + narrow_cast<std::uint32_t>(count),
                std::memory_order_relaxed);
}

} // namespace

VSemaphore::VSemaphore(VClass* cls) : Registered(cls) {
}

VSemaphore::VSemaphore(long maxSignals, char const* name, VClass* cls) : Registered(cls) {
    Init(maxSignals, name);
}

VSemaphore::~VSemaphore() {
    Close();
}

VSemaphore* VSemaphore::New() {
    return new VSemaphore();
}

bool VSemaphore::Init(long maxSignals, char const* name) {
    Close();
    m_posted.store(0, std::memory_order_relaxed);
    m_taken.store(0, std::memory_order_relaxed);
    m_maxSignals = narrow_cast<std::int32_t>(maxSignals);
    int error = ENOMEM;
    try {
        if (!m_name) {
            m_name = VObjectRef<VString>::Adopt(VString::NewString(nullptr));
        }
        *m_name = name;
        m_handle = SharedSemaphore::Open(m_name->CString(), error);
    } catch (std::bad_alloc const&) { // reported below
    }
    if (!m_handle) {
        ReportFailure(name ? name : "", maxSignals, error);
    }
    return m_handle != nullptr;
}

void VSemaphore::Close() {
    if (m_handle) {
        m_handle->Close();
        m_handle = nullptr;
    }
}

bool VSemaphore::ReleaseSemaphore(long count, long* /*previousCount*/) {
    if (count > 0 && !m_handle) {
        return false;
    }
    for (long posted = 0; posted < count; ++posted) {
        if (!m_handle->Post()) {
            return false;
        }
    }
    AddTo(m_posted, count);
    return true;
}

bool VSemaphore::WaitForSemaphore(long milliseconds) {
    if (!m_handle) {
        VThread::Sleep(milliseconds);
        return false;
    }
    bool const taken = milliseconds > 0 ? WaitInSteps(milliseconds) : m_handle->Wait();
    if (taken) {
        AddTo(m_taken, 1);
    }
    return taken;
}

bool VSemaphore::WaitInSteps(long milliseconds) {
    long remaining = milliseconds;
    while (remaining > 0) {
        long const step = remaining < kLastStepsBelow ? kLastSteps : kStep;
        remaining -= step;
        if (m_handle->TryWait()) {
            return true;
        }
        MonotonicTime const end = MillisecondsFromNow(step);
        while (m_handle->SleepUntilPosted(end)) {
            if (remaining == 0) {
                return false; // the unit is left for the next wait
            }
            if (m_handle->TryWait()) {
                return true;
            }
            // Another waiter was faster: the step is slept out.
        }
    }
    return false;
}

} // namespace VFoundation
