#pragma once

#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/Export.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/log/VStopWatch.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VLock.h"
#include "foundation/threads/VSemaphore.h"
#include "foundation/threads/VThread.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>

namespace VFoundation {

class ForkHook;
class ThreadPresence;
class VJob;
class VPtrArray;
class WaitingJobs;

/// A named thread that runs jobs, those of higher priority first and those of equal priority as they arrived:
///
///     auto const server = MakeObject<VJobServer>("Importer 4711", 64);
///     server->AddJob(job);          // starts the thread
///     ...
///     server->KillAllJobs();
///     server->EndServer(true);
///
/// End a server before its last `Release`: its thread holds a reference, and after that no one could end it. It
/// can be started again; jobs still queued are run then. Each start keeps the memory of a thread's stack until the
/// process ends: start a server once, or use a `VJobPool`.
///
/// The name is that of a semaphore which the whole system shares (`VSemaphore`): choose one that no other
/// server on the machine has, and without '/'. A server whose semaphore cannot be opened takes jobs and runs
/// none. The idle thread looks at the semaphore every 5 ms for the sake of other processes, which costs about
/// 1 % of a core; a job added by this process starts it at once.
///
/// An exception that leaves a hook, a delegate or `DoJob` is written to the log. The job then counts as
/// failed, and the thread goes on to the next one. What the log itself throws on the thread is dropped.
///
/// A child process (`fork`, made while no job runs and no thread calls the library) has the server without its
/// thread: it is not running, its server lock is free, and it can be started again. The job that ran in the
/// parent is let go of; queued ones stay. Parent and child share the semaphore: run the server in one of them.
///
/// DELIBERATE: each signal of the semaphore runs at most one job; signals and jobs go by count, so one that
/// another process took leaves a job waiting until the next is added.
/// DELIBERATE: `StartServer` is true although the thread could not be started or has not come up in time; see
/// `IsServerRunning()`.
/// DELIBERATE: `EndServer` lets a running server work for another 100 ms before it asks it to stop.
/// DELIBERATE: `EndServer` is true although the thread did not stop; a line on the standard error stream says
/// so. On the server's own thread, which cannot stop meanwhile, that is always so.
///
/// Ownership: retains queued jobs until they have run. The thread retains the server.
/// Threads: any thread may call any operation. No lock is held while hooks, delegates or jobs are called. The
/// end of the library waits for a thread that was told to end.
class VFOUNDATION_API VJobServer : public Registered<VJobServer, VObject> {
  public:
    static constexpr char const* kClassName = "VJobServer";
    static VClass* ms_theClass;
    static constexpr int kDefaultQueueSize = 16;

    /// Room for `queueSize` + 1 jobs that the thread has not yet looked at.
    VJobServer(char const* name, int queueSize, VClass* cls = nullptr) : VJobServer(cls, name, queueSize) {}
    VJobServer(VJobServer const&) = delete;
    VJobServer& operator=(VJobServer const&) = delete;
    ~VJobServer() override;
    /// One named "VJobServer" with room for `kDefaultQueueSize` jobs.
    [[nodiscard]] static VJobServer* New();
    /// Makes the list of live servers.
    static void InitializeClass();
    static void UninitializeClass();

    void Retain() const override;
    void Release() const override;
    /// "[<class>]", whether the thread runs, how many jobs are queued, and the job that it is at.
    void GetDescription(VString& out) const override;

    /// Queues a job (retained) and starts the server if it is not running. False for null, and when the queue
    /// is full. The job's delegate hears of a success only. What waits when a job ends the thread is run by another
    /// thread.
    virtual bool AddJob(VJob* job);
    /// Hooks around each job, on the server's thread.
    virtual void ServerPreDoActiveJob();
    virtual void ServerPostDoActiveJob();
    /// True when `a` is to run before `b`: if its priority is higher; false for null. An override is a strict
    /// order, so that a job which does not go before the last one goes before none. Called on the server's
    /// thread.
    virtual bool CompareJobs(VJob* a, VJob* b);
    /// Sorts what is waiting by `CompareJobFunction`; needed only if priorities changed after queuing.
    virtual void SortJobArray();

    /// Starts the thread and waits until it is up, at most 100 ms. False, and nothing changed, when it runs
    /// already, while one that was ended is still on its way out, while another thread holds the server lock,
    /// and when memory runs out before the start.
    bool StartServer();
    /// Stops the thread; the job it is at is finished first. A thread that is still starting comes up and gets
    /// its 100 ms as any other. Waits at most 1.1 s, and as long as a start takes. True. The argument has no
    /// effect. A job, a delegate or a hook calls `RequestEnd` instead.
    bool EndServer(bool wait);
    /// Tells the thread to end after the job that it is at, without waiting.
    void RequestEnd();
    /// Throws out all jobs that wait and asks the running one to stop (`VJob::AbortJob`, which may wait). True.
    bool KillAllJobs();

    /// Jobs that failed on this server so far: `DoJob()` returned false, or an exception ended the job.
    long FailedJobs() const noexcept { return m_failedJobs.load(std::memory_order_relaxed); }
    /// Called once, on the server's thread and without a lock, for the next job that fails; the job is borrowed. It is
    /// called whether or not the job has a delegate. What it throws is dropped. Null removes it.
    void SetOnFirstFailure(std::function<void(VJob*)> callback);

    bool IsServerRunning() const noexcept { return m_state.load() == eRunning; }
    VString const& Name() const noexcept { return m_name; }
    /// While this lock (borrowed) is held the thread starts no other job.
    VLock* ServerLock() noexcept { return &m_serverLock; }

    /// Orders two jobs, the higher priority first and null last.
    static int CompareJobFunction(VObject const** a, VObject const** b);

    /// All live servers (borrowed), or null.
    static VPtrArray* ms_jobServersArray;
    /// While set, the thread has each job describe itself after it has run. Relaxed: a switch.
    static std::atomic<bool> ms_bDebugJobServer;

  protected:
    VJobServer(VClass* cls, char const* name, int queueSize);

    /// What the thread is started with; set it before.
    VThread::ePriority m_threadPriority = VThread::eNormal;
    /// A text for subclasses; empty at first.
    VString m_text;

  private:
    class StartScope;
    class ThreadScope;

    enum eState : std::uint32_t { eStopped, eStarting, eRunning };
    /// The steps of a pass; the numbers stand in log lines.
    enum eStage : int {
        ePausing = 1,
        eWaiting = 2,
        eCollecting = 3,
        eTaking = 4,
        eWorking = 5,
        eReporting = 6,
        eFinishing = 7,
        eReleasing = 8
    };

    // The queue and its order: VJobServer.cpp.
    VJob* CollectAndTakeFirst();
    void CollectByHook();
    VObjectRef<VJob> PopQueuedJob();
    VObjectRef<VJob> WaitingJob(long index) const;
    VObjectRef<VJob> CurrentJob() const;
    void DropCurrentJob();
    double TimeStamp() const;

    // The thread's life: VJobServerThread.cpp.
    bool StartThread();
    static void* ServerThreadProxy(void* server);
    void ServerThread(ThreadScope& scope);
    void LeaveThread(ThreadPresence& presence, bool holdsRunningLock);
    VObjectRef<VThread> TakeThread();
    bool MarkThreadOver(ThreadPresence const& presence);
    bool HasThreadEndedItself() const;
    std::shared_ptr<ThreadPresence> CurrentPresence() const;
    static void ForgetThreadInChild(void* server);
    void DropWhatTheParentRan();
    bool IsOwnThread() const noexcept;

    // One pass, and what it tells the delegate and the log: VJobServerPass.cpp.
    bool Guarded(void (VJobServer::*step)());
    void RunPass();
    bool Work(VJob* job);
    void Report(VJob* job, bool succeeded);
    void FinishInterruptedJob();
    void NoteFailure(VJob* job);

    static constexpr std::size_t kCacheLine = 64;

    VSemaphore m_jobsSemaphore;
    VObjectRingBufferTmpl<VJob> m_queue;
    // What the thread writes with each job is apart from what the threads that add jobs read.
    alignas(kCacheLine) mutable detail::Mutex m_jobsLock;
    std::unique_ptr<WaitingJobs> m_waiting VFOUNDATION_POINTEE_GUARDED_BY(m_jobsLock);
    VObjectRef<VJob> m_currentJob VFOUNDATION_GUARDED_BY(m_jobsLock);
    eStage m_stage = ePausing; // the thread's own
    alignas(kCacheLine) std::atomic<std::uint32_t> m_state{eStopped};
    VLock m_serverLock;
    VString m_name;
    VStopWatch m_clock{true};
    /// When on that clock the thread started, from which the times of jobs count; negative without a thread. Relaxed: a
    /// number of its own.
    std::atomic<double> m_threadStart{-1};
    VLock m_runningLock;                         // held by the thread as long as it runs
    std::atomic<VThread::ThreadID> m_threadID{}; // relaxed: a thread only looks for its own id
    mutable detail::Mutex m_threadLock;
    std::shared_ptr<ThreadPresence> m_presence VFOUNDATION_GUARDED_BY(m_threadLock);
    VObjectRef<VThread> m_thread VFOUNDATION_GUARDED_BY(m_threadLock);
    bool m_isThreadOver VFOUNDATION_GUARDED_BY(m_threadLock) = false; // the next one may start
    std::atomic<long> m_failedJobs{0};                                // relaxed: a statistic
    std::function<void(VJob*)> m_onFirstFailure VFOUNDATION_GUARDED_BY(m_jobsLock);
    std::atomic<bool> m_hasLostThread{false}; // in a child process, with what the thread worked on
    std::unique_ptr<ForkHook> const m_forkHook;
};

} // namespace VFoundation
