#include "foundation/messaging/VMessageCenterJob.h"

#include "foundation/host/VFpuMode.h"
#include "foundation/log/VLog.h"
#include "foundation/messaging/VCommandDelayer.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/internal/EventFlag.h"
#include "foundation/threads/internal/ForkHook.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace VFoundation {

VClass* VMessageCenterJob::ms_theClass = nullptr;

namespace {

// Milliseconds.
constexpr long kShortestSleep = 1;
constexpr long kLongestSleep = std::numeric_limits<std::int32_t>::max();
constexpr long kAbortStep = 100;

} // namespace

/// Ends the job on every way out of it.
class VMessageCenterJob::OverScope {
  public:
    explicit OverScope(VMessageCenterJob* job) : m_job(job) {}
    OverScope(OverScope const&) = delete;
    OverScope& operator=(OverScope const&) = delete;
    ~OverScope() { m_job->EndWork(); }

  private:
    VMessageCenterJob* m_job;
};

VMessageCenterJob::VMessageCenterJob(VCommandDelayer* delayer, long sleepMilliseconds)
    : Registered(nullptr), m_delayer(delayer), m_abort(std::make_unique<EventFlag>()),
      m_finished(std::make_unique<EventFlag>()),
      m_sleep(std::clamp(sleepMilliseconds, kShortestSleep, kLongestSleep)),
      m_forkHook(std::make_unique<ForkHook>(this, ForkHook::Calls{nullptr, nullptr, &LoseThreadInChild})) {
}

VMessageCenterJob::~VMessageCenterJob() = default;

VMessageCenterJob* VMessageCenterJob::New() {
    return new VMessageCenterJob(nullptr, kShortestSleep);
}

bool VMessageCenterJob::DoJob() {
    if (!Claim()) {
        return true;
    }
    OverScope const over(this);
    if (!m_delayer) {
        return true;
    }
    m_threadID.store(VThread::GetCurrentThreadID());
    VFpuMode const roundDownward(VFpuMode::kDownward);
    VCriticalSection* const section = m_delayer->GetCriticalSection();
    while (!m_abort->IsSet()) {
        Poll(section);
        m_abort->WaitFor(m_sleep);
    }
    return true;
}

void VMessageCenterJob::Poll(VCriticalSection* section) {
    if (!m_delayer->IsServiceDue()) {
        return;
    }
    VCriticalSectionScope scope;
    if (!scope.TryEnter(section, 0) || m_delayer->Serviced()) {
        return;
    }
    m_delayer->SetServiced(true); // before the service and not after it: a post in between clears it again
    try {
        m_delayer->SendDelayedCommands();
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        WithoutThrowing([] { VLog::Trace("VMessageCenterJob::DoJob - An exception occured!\n"); });
    }
}

void VMessageCenterJob::EndWork() {
    m_delayer.Exchange(nullptr);
    m_threadID.store(VThread::ThreadID{});
    m_finished->Set();
}

double VMessageCenterJob::JobProgress() {
    return 0.5;
}

bool VMessageCenterJob::IsOnThisThread() const noexcept {
    return m_threadID.load() == VThread::GetCurrentThreadID();
}

bool VMessageCenterJob::AbortJob() {
    m_abort->Set();
    if (IsOnThisThread()) {
        return true;
    }
    if (Claim()) {
        EndWork();
    }
    EndInChild();
    while (!m_finished->WaitFor(kAbortStep)) {
    }
    return true;
}

/// Called in a child process, before anything else runs there.
void VMessageCenterJob::LoseThreadInChild(void* job) {
    auto* const self = static_cast<VMessageCenterJob*>(job);
    if (self->m_claimed.load() && !self->m_finished->IsSet() && !self->IsOnThisThread()) {
        self->m_hasLostThread.store(true);
    }
}

bool VMessageCenterJob::EndInChild() {
    bool const lost = m_hasLostThread.exchange(false);
    if (lost) {
        EndWork();
    }
    return lost;
}

} // namespace VFoundation
