#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/log/VStopWatch.h"
#include "foundation/threads/VJob.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <new>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

namespace VFoundation {

class ForkHook;

/// Several threads that run jobs, those of higher priority first and those of equal priority in order of arrival; up to
/// `ThreadCount()` run at once:
///
///     VJobPool pool;                                            // a thread for each processor
///     for (auto const& file : files) {
///         pool.Run([&file] { MakeThumbnail(file); });
///     }
///     pool.AddJob(job);                         // a VJob, with its priority, its delegate and its times
///     pool.WaitForAll();
///
/// Unlike a `VJobServer` it has no name, shares nothing with other processes, and its queue is bounded by memory only.
/// Threads start as jobs come in and sleep while there are none.
///
/// A job fails when it returns false or throws; the log gets a line for what it throws, and the thread goes on. A
/// delegate is told as a server's is, with null for the server: of the queuing on the thread that adds the job, of the
/// rest on the pool's. Times of jobs count from the pool's construction.
///
/// Cost: an allocation, some 0.1 us for the thread that adds a job (benchmarks/JobServerBench.cpp), more when a thread
/// has to be woken.
///
/// A child process (`fork`, made while no thread calls the library) has the pool without its threads and jobs, which are
/// the parent's.
///
/// Ownership: retains a job until it has run. A copy of a function lives as long.
/// Threads: any thread may call any operation, jobs included. No lock is held while jobs and delegates are called. End
/// the pool before the library; its destructor is not for its own threads.
class VFOUNDATION_API VJobPool {
  public:
    /// 0 or less: as many threads as the machine has processors; 1024 at most.
    explicit VJobPool(int threads = 0);
    VJobPool(VJobPool const&) = delete;
    VJobPool& operator=(VJobPool const&) = delete;
    /// Waits until all jobs have run.
    ~VJobPool();

    /// Queues a job (retained) with its own priority. False for null, and when no thread can be started or memory runs
    /// out; the delegate then hears nothing.
    bool AddJob(VJob* job);
    /// Queues a function, which counts as succeeded unless it returns false or throws. Cheaper than a job, and
    /// `KillAllJobs` cannot stop it once it runs. False as above; what copying the function throws passes.
    template <class Function>
    bool Run(Function&& function, int priority = 0);

    /// Waits until no job is waiting or running, those included that jobs add meanwhile. Returns at once on a thread of
    /// this pool, whose own job is running.
    void WaitForAll();
    /// Throws out all jobs that wait and asks the running ones to stop (`VJob::AbortJob`, which may wait).
    void KillAllJobs();

    int ThreadCount() const noexcept { return m_threadCount; }
    /// Jobs that wait or run.
    long UnfinishedJobs() const noexcept { return m_unfinished.load(std::memory_order_relaxed); }
    /// Jobs that failed so far.
    long FailedJobs() const noexcept { return m_failed.load(std::memory_order_relaxed); }
    /// Called once, on the thread of the next job that fails. What it throws is dropped. Null removes it.
    void SetOnFirstFailure(std::function<void()> callback);

  private:
    class Task;
    class JobTask;
    class Worker;
    template <class Function>
    class FunctionTask;

    static constexpr std::size_t kCacheLine = 64;

    bool Add(Task* adopted);
    bool HaveThread();
    bool IsServed();
    bool StartThread() VFOUNDATION_REQUIRES(m_lock);
    void Lock() VFOUNDATION_THREAD_ATTRIBUTE(acquire_capability(m_lock));
    Task* Take(Worker& worker);
    Task* TakeOrSleep(Worker& worker);
    void Collect() VFOUNDATION_REQUIRES(m_lock);
    void Insert(Task* task) VFOUNDATION_REQUIRES(m_lock);
    Task* PopFirst() VFOUNDATION_REQUIRES(m_lock);
    void WakeOne() noexcept;
    bool StopSleeping() noexcept;
    void Work(Worker& worker, Task* task);
    void NoteFailure();
    void Finished(std::uint32_t jobs) noexcept;
    bool IsOwnThread() const noexcept;
    void Leave(Worker* worker) noexcept;
    void EndThreads();

    static void BeforeFork(void* self);
    static void AfterForkInParent(void* self);
    static void AfterForkInChild(void* self);

    int const m_threadCount;
    VStopWatch const m_clock{true};

    // Tasks that were added and not yet sorted in, the last one first. relaxed: a first guess before the real operation.
    alignas(kCacheLine) std::atomic<Task*> m_added{nullptr};
    // Threads that sleep, or are about to, and were not yet told to wake; and the wake-ups that they have to take.
    alignas(kCacheLine) std::atomic<std::uint32_t> m_sleepers{0};
    std::atomic<std::uint32_t> m_wakeUps{0};
    std::atomic<bool> m_isComplete{false}; // all threads have been started; relaxed: else the lock decides
    std::atomic<bool> m_ending{false};     // relaxed in a loop that looks again
    // relaxed for `UnfinishedJobs`, a statistic
    alignas(kCacheLine) std::atomic<std::uint32_t> m_unfinished{0};
    std::atomic<std::uint32_t> m_waiters{0}; // in `WaitForAll`; they sleep on the next one
    std::atomic<std::uint32_t> m_timesDone{0};
    std::atomic<long> m_failed{0}; // relaxed: a statistic

    alignas(kCacheLine) mutable detail::Mutex m_lock;
    // As `m_first` was when a task was last taken; relaxed: whoever reads true looks again under the lock.
    std::atomic<bool> m_hasWaiting{false};
    Task* m_first VFOUNDATION_GUARDED_BY(m_lock) = nullptr; // of the highest priority
    std::vector<Worker*> m_workers VFOUNDATION_GUARDED_BY(m_lock);
    std::vector<std::thread> m_threads VFOUNDATION_GUARDED_BY(m_lock);
    std::function<void()> m_onFirstFailure VFOUNDATION_GUARDED_BY(m_lock);
    std::unique_ptr<ForkHook> const m_forkHook;
};

/// A piece of work and its place among those that wait: tasks of one priority follow each other by `next`, and the first
/// of them knows the last one and the first of the next lower priority.
class VJobPool::Task {
  public:
    explicit Task(int itsPriority) noexcept : priority(itsPriority) {}
    Task(Task const&) = delete;
    Task& operator=(Task const&) = delete;
    virtual ~Task() = default;
    virtual bool Do() = 0;
    /// After `Do`, also one that threw.
    virtual void Report(bool /*succeeded*/) {}
    virtual VJob* Job() const noexcept { return nullptr; }

    int const priority;
    Task* next = nullptr;
    Task* last = nullptr;
    Task* nextPriority = nullptr;
};

template <class Function>
class VJobPool::FunctionTask final : public Task {
  public:
    template <class Source>
    FunctionTask(Source&& function, int itsPriority)
        : Task(itsPriority), m_function(std::forward<Source>(function)) {}
    bool Do() override {
        if constexpr (std::is_same_v<decltype(m_function()), bool>) {
            return m_function();
        } else {
            m_function();
            return true;
        }
    }

  private:
    Function m_function;
};

template <class Function>
bool VJobPool::Run(Function&& function, int priority) {
    using Queued = FunctionTask<std::decay_t<Function>>;
    return HaveThread() && Add(new (std::nothrow) Queued(std::forward<Function>(function), priority));
}

} // namespace VFoundation
