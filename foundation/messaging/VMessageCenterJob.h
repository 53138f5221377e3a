#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/threads/VJob.h"
#include "foundation/threads/VThread.h"

#include <atomic>
#include <memory>

namespace VFoundation {

class EventFlag;
class ForkHook;
class VCommandDelayer;
class VCriticalSection;

/// The job that services a delayer until it is aborted: it looks every few milliseconds whether a service is
/// due and anything was queued. `VMessageCenter::StartCenter` makes one. It runs once; run again it returns
/// at once.
///
/// The floating-point unit rounds downward while it runs.
///
/// Ownership: retains the delayer until it is over.
/// Threads: `AbortJob` from any thread.
class VFOUNDATION_API VMessageCenterJob : public Registered<VMessageCenterJob, VJob> {
  public:
    static constexpr char const* kClassName = "VMessageCenterJob";
    static VClass* ms_theClass;

    /// Looks every `sleepMilliseconds`, at least 1. Without a delayer there is nothing to do.
    VMessageCenterJob(VCommandDelayer* delayer, long sleepMilliseconds);
    VMessageCenterJob(VMessageCenterJob const&) = delete;
    VMessageCenterJob& operator=(VMessageCenterJob const&) = delete;
    ~VMessageCenterJob() override;
    /// One without a delayer.
    [[nodiscard]] static VMessageCenterJob* New();
    static void InitializeClass() {}
    static void UninitializeClass() {}

    /// Services the delayer until aborted. True.
    bool DoJob() override;
    /// Always 0.5, as there is no end to it.
    double JobProgress() override;
    /// Ends the job and waits until it is over; a job that has not begun never will. On the job's own thread,
    /// that is in a handler, it does not wait. True.
    bool AbortJob() override;

    /// True in a handler that the job has called.
    bool IsOnThisThread() const noexcept;
    /// In a child process: true when the job was running in the parent. It is over then.
    bool EndInChild();

  private:
    class OverScope;

    static void LoseThreadInChild(void* job);

    bool Claim() noexcept { return !m_claimed.exchange(true); }
    void Poll(VCriticalSection* section);
    void EndWork();

    VObjectRef<VCommandDelayer> m_delayer;
    std::unique_ptr<EventFlag> m_abort;
    std::unique_ptr<EventFlag> m_finished;
    long m_sleep;                       // ms
    std::atomic<bool> m_claimed{false}; // by the thread that runs the job, or the one that aborts it before
    std::atomic<VThread::ThreadID> m_threadID{};
    std::atomic<bool> m_hasLostThread{false};
    std::unique_ptr<ForkHook> const m_forkHook;
};

} // namespace VFoundation
