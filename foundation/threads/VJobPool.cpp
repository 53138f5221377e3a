#include "foundation/threads/VJobPool.h"

#include "foundation/core/VException.h"
#include "foundation/log/VLog.h"
#include "foundation/threads/IVJobDelegate.h"
#include "foundation/threads/VThread.h"
#include "foundation/threads/internal/ForkHook.h"
#include "foundation/threads/internal/Futex.h"
#include "foundation/threads/internal/WithoutThrowing.h"

#include <algorithm>
#include <system_error>

namespace VFoundation {

namespace {

constexpr int kMostThreads = 1024;
/// A job that is added on another core comes within some of these, sooner than a sleeper is woken.
constexpr int kLooksBeforeSleep = 200;
/// The lock is held for less than this, unless its holder lost its core.
constexpr int kTriesBeforeWait = 100;
/// In ms, between two tries to start a thread for what waits.
constexpr long kBetweenStarts = 20;

int UsableThreads(int threads) {
    int const wanted = threads > 0 ? threads : static_cast<int>(std::thread::hardware_concurrency());
    return std::clamp(wanted, 1, kMostThreads);
}

} // namespace

class VJobPool::JobTask final : public Task {
  public:
    JobTask(VJob* job, VJobPool const& pool) : Task(job->Priority()), m_job(job), m_pool(pool) {
        Note(m_job->m_queuedTime);
        m_job->m_queued.store(true, std::memory_order_relaxed);
    }

    bool Do() override {
        m_job->StartedJob();
        if (IVJobDelegate* const delegate = m_job->Delegate()) {
            delegate->JobStarted(nullptr, m_job.Get());
        }
        Note(m_job->m_startTime);
        bool const succeeded = m_job->DoJob();
        Note(m_job->m_endTime);
        return succeeded;
    }
    void Report(bool succeeded) override {
        struct FinishScope {
            VJob* job;
            ~FinishScope() {
                WithoutThrowing([this] { job->FinishedJob(); });
            }
        };
        FinishScope const finish{m_job.Get()};
        IVJobDelegate* const delegate = m_job->Delegate();
        if (delegate && succeeded) {
            delegate->JobSucceeded(nullptr, m_job.Get());
        } else if (delegate) {
            delegate->JobFailed(nullptr, m_job.Get());
        }
    }
    VJob* Job() const noexcept override { return m_job.Get(); }

  private:
    void Note(std::atomic<double>& time) const {
        // relaxed: see `VJob`
        time.store(m_pool.m_clock.GetElapsedTime(), std::memory_order_relaxed);
    }

    VObjectRef<VJob> const m_job;
    VJobPool const& m_pool;
};

/// A thread's time in the pool, however it ends.
class VJobPool::Worker {
  public:
    /// The worker that this thread is, or null.
    static constinit thread_local Worker* t_current;

    explicit Worker(VJobPool* itsPool) : pool(itsPool) {}
    Worker(Worker const&) = delete;
    Worker& operator=(Worker const&) = delete;

    void Serve() {
        t_current = this;
        struct ServeScope {
            Worker* worker;
            ~ServeScope() { worker->pool->Leave(worker); }
        };
        ServeScope const scope{this};
        while (Task* const task = pool->TakeOrSleep(*this)) {
            pool->Work(*this, task);
        }
    }

    VJobPool* const pool;
    VJob* job = nullptr; // that it runs; the pool's lock guards it
};

constinit thread_local VJobPool::Worker* VJobPool::Worker::t_current = nullptr;

VJobPool::VJobPool(int threads)
    : m_threadCount(UsableThreads(threads)),
      m_forkHook(std::make_unique<ForkHook>(
          this, ForkHook::Calls{&BeforeFork, &AfterForkInParent, &AfterForkInChild})) {
}

VJobPool::~VJobPool() {
    WaitForAll();
    EndThreads();
}

bool VJobPool::IsOwnThread() const noexcept {
    return Worker::t_current && Worker::t_current->pool == this;
}

// Threads

void VJobPool::Lock() VFOUNDATION_THREAD_ATTRIBUTE(no_thread_safety_analysis) {
    for (int tries = 0; tries < kTriesBeforeWait; ++tries) {
        if (m_lock.TryLock()) {
            return;
        }
        PauseCore();
    }
    m_lock.Lock();
}

/// True when a thread is there, or now is, that will run what is added. Starts one more until all are there.
bool VJobPool::HaveThread() {
    if (m_isComplete.load(std::memory_order_relaxed)) {
        return true;
    }
    detail::MutexLock const lock(m_lock);
    bool const started = static_cast<int>(m_workers.size()) < m_threadCount && StartThread();
    m_isComplete.store(static_cast<int>(m_workers.size()) == m_threadCount, std::memory_order_relaxed);
    return started || !m_workers.empty();
}

bool VJobPool::StartThread() {
    try {
        auto worker = std::make_unique<Worker>(this);
        m_workers.reserve(m_workers.size() + 1);
        m_threads.reserve(m_threads.size() + 1);
        m_threads.emplace_back([self = worker.get()] {
            std::unique_ptr<Worker> const owned(self);
            owned->Serve();
        });
        m_workers.push_back(worker.release());
        return true;
    } catch (std::bad_alloc const&) { // as if the system had refused
    } catch (std::system_error const&) {
    }
    return false;
}

/// True when what was added will be run. Starts a thread if there is none.
bool VJobPool::IsServed() {
    detail::MutexLock const lock(m_lock);
    return !m_workers.empty() || StartThread();
}

/// The thread's last step. When a job has ended the thread, another takes its place; if none can be started, those that
/// wait for the jobs try again.
void VJobPool::Leave(Worker* worker) noexcept {
    Worker::t_current = nullptr;
    detail::MutexLock const lock(m_lock);
    m_workers.erase(std::find(m_workers.begin(), m_workers.end(), worker));
    if (m_ending.load()) {
        return;
    }
    bool const isReplaced = StartThread();
    m_isComplete.store(isReplaced, std::memory_order_relaxed);
    if (!isReplaced) {
        m_timesDone.fetch_add(1);
        FutexWakeAll(m_timesDone);
    }
}

void VJobPool::EndThreads() {
    std::vector<std::thread> threads;
    {
        detail::MutexLock const lock(m_lock);
        m_ending.store(true);
        threads.swap(m_threads);
    }
    for (std::size_t i = 0; i < threads.size(); ++i) {
        WakeOne();
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

// Sleep. Each sleeper is told to wake once: who takes it off the count adds a wake-up.

void VJobPool::WakeOne() noexcept {
    for (std::uint32_t sleepers = m_sleepers.load(); sleepers > 0;) {
        if (m_sleepers.compare_exchange_weak(sleepers, sleepers - 1)) {
            m_wakeUps.fetch_add(1);
            FutexWakeOne(m_wakeUps);
            return;
        }
    }
}

/// Before the sleep. False when another thread has taken this one off the count already.
bool VJobPool::StopSleeping() noexcept {
    for (std::uint32_t sleepers = m_sleepers.load(); sleepers > 0;) {
        if (m_sleepers.compare_exchange_weak(sleepers, sleepers - 1)) {
            return true;
        }
    }
    return false;
}

/// Null once the pool ends.
VJobPool::Task* VJobPool::TakeOrSleep(Worker& worker) {
    for (;;) {
        for (int look = 0; look < kLooksBeforeSleep; ++look) {
            if (m_added.load(std::memory_order_relaxed) || m_hasWaiting.load(std::memory_order_relaxed)) {
                if (Task* const task = Take(worker)) {
                    return task;
                }
            }
            if (m_ending.load(std::memory_order_relaxed)) {
                return nullptr;
            }
            PauseCore();
        }
        m_sleepers.fetch_add(1);
        // What is added from here on finds this thread on the count; what was added before is found now.
        Task* const task = Take(worker);
        if ((task || m_ending.load()) && StopSleeping()) {
            return task;
        }
        for (std::uint32_t wakeUps = m_wakeUps.load();;) {
            if (wakeUps == 0) {
                FutexWait(m_wakeUps, 0, nullptr);
                wakeUps = m_wakeUps.load();
            } else if (m_wakeUps.compare_exchange_weak(wakeUps, wakeUps - 1)) {
                break;
            }
        }
        if (task) {
            return task;
        }
    }
}

// Tasks

bool VJobPool::AddJob(VJob* job) {
    if (!job || !HaveThread()) {
        return false;
    }
    VObjectRef<VJob> const held(
        job); // it may have run, and its owner released it, before the delegate hears of it
    IVJobDelegate* const delegate = job->Delegate();
    JobTask* const task = new (std::nothrow) JobTask(job, *this);
    if (!Add(task)) {
        return false;
    }
    if (delegate) {
        delegate->JobQueued(nullptr, job);
    }
    return true;
}

bool VJobPool::Add(Task* adopted) {
    if (!adopted) {
        return false;
    }
    m_unfinished.fetch_add(1);
    adopted->next = m_added.load(std::memory_order_relaxed);
    while (!m_added.compare_exchange_weak(adopted->next, adopted)) {
    }
    if (m_sleepers.load() > 0) {
        WakeOne();
    }
    return true;
}

/// The next task, which the worker now runs; null when there is none.
VJobPool::Task* VJobPool::Take(Worker& worker) {
    Lock();
    Collect();
    Task* const task = PopFirst();
    m_hasWaiting.store(m_first != nullptr, std::memory_order_relaxed);
    worker.job = task ? task->Job() : nullptr;
    m_lock.Unlock();
    return task;
}

/// Sorts in what was added, in the order of its coming.
void VJobPool::Collect() {
    // Sequentially consistent, as is the count of sleepers: a thread that is about to sleep counts itself first and looks
    // here then, and one that adds looks there last. One of them sees the other.
    if (!m_added.load()) {
        return;
    }
    Task* oldest = nullptr;
    for (Task* task = m_added.exchange(nullptr); task;) {
        Task* const older = std::exchange(task->next, oldest);
        oldest = std::exchange(task, older);
    }
    while (oldest) {
        Task* const task = std::exchange(oldest, oldest->next);
        task->next = nullptr;
        Insert(task);
    }
}

void VJobPool::Insert(Task* task) {
    Task** link = &m_first;
    while (*link && (*link)->priority > task->priority) {
        link = &(*link)->nextPriority;
    }
    Task* const first = *link;
    if (first && first->priority == task->priority) {
        first->last->next = task;
        first->last = task;
        return;
    }
    task->last = task;
    task->nextPriority = first;
    *link = task;
}

VJobPool::Task* VJobPool::PopFirst() {
    Task* const task = m_first;
    if (task && task->next) {
        m_first = task->next;
        m_first->last = task->last;
        m_first->nextPriority = task->nextPriority;
    } else if (task) {
        m_first = task->nextPriority;
    }
    return task;
}

void VJobPool::Work(Worker& worker, Task* task) {
    /// However the job ends, it counts as over, and its task goes.
    struct TaskScope {
        VJobPool* pool;
        Worker* worker;
        Task* task;
        bool succeeded = false;
        TaskScope(VJobPool* itsPool, Worker* itsWorker, Task* itsTask)
            : pool(itsPool), worker(itsWorker), task(itsTask) {}
        TaskScope(TaskScope const&) = delete;
        TaskScope& operator=(TaskScope const&) = delete;
        ~TaskScope() {
            if (!succeeded) {
                pool->NoteFailure();
            }
            WithoutThrowing([this] { task->Report(succeeded); });
            if (task->Job()) {
                detail::MutexLock const lock(pool->m_lock);
                worker->job = nullptr;
            }
            WithoutThrowing([this] { delete task; });
            pool->Finished(1);
        }
    };
    TaskScope scope(this, &worker, task);
    try {
        scope.succeeded = task->Do();
    } catch (VException const&) {
        VLog::TraceNoThrow("VJobPool - A VException occurred in a job\n");
    } catch (...) {
        if (VThread::CaughtEndOfThread()) {
            throw;
        }
        VLog::TraceNoThrow("VJobPool - An exception occurred in a job\n");
    }
}

void VJobPool::Finished(std::uint32_t jobs) noexcept {
    if (m_unfinished.fetch_sub(jobs) == jobs && m_waiters.load() > 0) {
        m_timesDone.fetch_add(1);
        FutexWakeAll(m_timesDone);
    }
}

void VJobPool::WaitForAll() {
    if (IsOwnThread()) {
        return;
    }
    m_waiters.fetch_add(1);
    for (;;) {
        std::uint32_t const seen = m_timesDone.load();
        if (m_unfinished.load() == 0) {
            break;
        }
        MonotonicTime const soon = MillisecondsFromNow(kBetweenStarts);
        FutexWait(m_timesDone, seen, IsServed() ? nullptr : &soon);
    }
    m_waiters.fetch_sub(1);
}

void VJobPool::KillAllJobs() {
    Task* waiting = nullptr;
    std::vector<VObjectRef<VJob>> running;
    {
        detail::MutexLock const lock(m_lock);
        for (Worker const* const worker : m_workers) {
            if (worker->job) {
                running.emplace_back(worker->job);
            }
        }
        Collect();
        for (Task** end = &waiting; Task* const task = PopFirst(); end = &task->next) {
            task->next = nullptr;
            *end = task;
        }
    }
    while (waiting) { // without the lock: a job's destructor may add another one
        Task* const task = std::exchange(waiting, waiting->next);
        WithoutThrowing([task] { delete task; });
        Finished(1);
    }
    for (auto const& job : running) {
        job->AbortJob();
    }
}

void VJobPool::SetOnFirstFailure(std::function<void()> callback) {
    detail::MutexLock const lock(m_lock);
    std::swap(m_onFirstFailure, callback); // the one before is destroyed after the lock
}

void VJobPool::NoteFailure() {
    m_failed.fetch_add(1, std::memory_order_relaxed);
    std::function<void()> callback;
    {
        detail::MutexLock const lock(m_lock);
        std::swap(m_onFirstFailure, callback);
    }
    if (callback) {
        WithoutThrowing(callback);
    }
}

// Forks

void VJobPool::BeforeFork(void* self) VFOUNDATION_THREAD_ATTRIBUTE(no_thread_safety_analysis) {
    static_cast<VJobPool*>(self)->m_lock.Lock();
}

void VJobPool::AfterForkInParent(void* self) VFOUNDATION_THREAD_ATTRIBUTE(no_thread_safety_analysis) {
    static_cast<VJobPool*>(self)->m_lock.Unlock();
}

void VJobPool::AfterForkInChild(void* self) VFOUNDATION_THREAD_ATTRIBUTE(no_thread_safety_analysis) {
    auto* const pool = static_cast<VJobPool*>(self);
    // The objects of the lost threads are neither joined nor destroyed: the system knows nothing of such threads here.
    static_cast<void>(new (std::nothrow) std::vector<std::thread>(std::move(pool->m_threads)));
    pool->m_threads.clear();
    pool->m_workers.clear();
    pool->m_isComplete.store(false);
    pool->m_sleepers.store(0);
    pool->m_wakeUps.store(0);
    pool->m_waiters.store(0);
    // Nor are the tasks released, as that may run client code.
    pool->m_added.store(nullptr);
    pool->m_first = nullptr;
    pool->m_hasWaiting.store(false);
    pool->m_unfinished.store(0);
    pool->m_lock.Unlock();
}

} // namespace VFoundation
