#include "benchmarks/Percentiles.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLog.h"
#include "foundation/threads/VJob.h"
#include "foundation/threads/VJobServer.h"

#include <benchmark/benchmark.h>
#include <oneapi/tbb/task_group.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <semaphore.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <utility>

// Handing work to a thread: how long until it starts when the thread is idle, and how many empty jobs go
// through in a second when one thread hands them over. The peers are oneTBB's task_group, and a thread with a
// queue and a condition variable.

namespace {

using namespace VFoundation;
using Clock = std::chrono::steady_clock;

/// What every peer runs: says when it started, or counts.
struct Work {
    std::atomic<Clock::rep>* started = nullptr;
    std::atomic<long>* done = nullptr;
    void operator()() const {
        if (started) {
            started->store(Clock::now().time_since_epoch().count());
        } else {
            done->fetch_add(1, std::memory_order_relaxed);
        }
    }
};

class BenchJob : public Registered<BenchJob, VJob> {
  public:
    static constexpr char const* kClassName = "BenchJob";
    static inline VClass* ms_theClass = nullptr;
    static constexpr bool kIsAbstract = true;
    explicit BenchJob(Work work) : Registered(nullptr), m_work(work) {}
    bool DoJob() override { return m_work(), true; }
    double JobProgress() override { return 0; }
    bool AbortJob() override { return true; }

  private:
    Work m_work;
};

class OurServer {
  public:
    OurServer()
        : m_name("VFoundationBench." + std::to_string(getpid())),
          m_server(VObjectRef<VJobServer>::Adopt(new VJobServer(m_name.c_str(), 16384))) {
        m_server->StartServer();
    }
    OurServer(OurServer const&) = delete;
    OurServer& operator=(OurServer const&) = delete;
    ~OurServer() {
        m_server->EndServer(true);
        sem_unlink(m_name.c_str());
    }
    void Run(Work work) {
        auto const job = VObjectRef<BenchJob>::Adopt(new BenchJob(work));
        while (!m_server->AddJob(job.Get())) {
            std::this_thread::yield();
        }
    }

  private:
    std::string m_name;
    VObjectRef<VJobServer> m_server;
};

class OneTBB {
  public:
    ~OneTBB() { m_group.wait(); }
    void Run(Work work) { m_group.run(work); }

  private:
    oneapi::tbb::task_group m_group;
};

class ConditionVariable {
  public:
    ConditionVariable() : m_thread([this] { Serve(); }) {}
    ConditionVariable(ConditionVariable const&) = delete;
    ConditionVariable& operator=(ConditionVariable const&) = delete;
    ~ConditionVariable() {
        {
            std::lock_guard const lock(m_lock);
            m_over = true;
        }
        m_posted.notify_one();
        m_thread.join();
    }
    void Run(Work work) {
        {
            std::lock_guard const lock(m_lock);
            m_queue.emplace_back(work);
        }
        m_posted.notify_one();
    }

  private:
    void Serve() {
        std::unique_lock lock(m_lock);
        for (;;) {
            m_posted.wait(lock, [this] { return m_over || !m_queue.empty(); });
            if (m_queue.empty()) {
                return;
            }
            std::function<void()> const work = std::move(m_queue.front());
            m_queue.pop_front();
            lock.unlock();
            work();
            lock.lock();
        }
    }

    std::mutex m_lock;
    std::condition_variable m_posted;
    std::deque<std::function<void()>> m_queue;
    bool m_over = false;
    std::thread m_thread;
};

template <class Server>
void StartOnIdleServer(benchmark::State& state) {
    ms_bVerbose = false;
    Server server;
    std::vector<double> latencies;
    for (auto _ : state) {
        std::this_thread::sleep_for(std::chrono::milliseconds(3)); // until its thread sleeps
        std::atomic<Clock::rep> started{0};
        auto const handedOver = Clock::now();
        server.Run(Work{&started, nullptr});
        while (started.load() == 0) {
            std::this_thread::yield();
        }
        std::chrono::duration<double> const latency(Clock::duration(started.load()) -
                                                    handedOver.time_since_epoch());
        latencies.push_back(latency.count());
        state.SetIterationTime(latency.count());
    }
    bench_support::ReportPercentiles(state, latencies);
}

template <class Server>
void EmptyJobs(benchmark::State& state) {
    ms_bVerbose = false;
    constexpr long kJobs = 10'000;
    Server server;
    for (auto _ : state) {
        std::atomic<long> done{0};
        for (long i = 0; i < kJobs; ++i) {
            server.Run(Work{nullptr, &done});
        }
        while (done.load() < kJobs) {
            std::this_thread::yield();
        }
    }
    state.SetItemsProcessed(state.iterations() * kJobs);
}

BENCHMARK(StartOnIdleServer<OurServer>)->UseManualTime()->Iterations(300);
BENCHMARK(StartOnIdleServer<ConditionVariable>)->UseManualTime()->Iterations(300);
BENCHMARK(StartOnIdleServer<OneTBB>)->UseManualTime()->Iterations(300);
BENCHMARK(EmptyJobs<OurServer>)->UseRealTime();
BENCHMARK(EmptyJobs<ConditionVariable>)->UseRealTime();
BENCHMARK(EmptyJobs<OneTBB>)->UseRealTime();

} // namespace
