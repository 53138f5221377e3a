#include "benchmarks/Meter.h"
#include "benchmarks/Percentiles.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/log/VLog.h"
#include "foundation/threads/VJob.h"
#include "foundation/threads/VJobServer.h"

#include <benchmark/benchmark.h>
#include <glib.h>
#include <oneapi/tbb/task_group.h>

#include <atomic>
#include <barrier>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <semaphore.h>
#include <string>
#include <thread>
#include <unistd.h>
#include <utility>

// Handing work to a thread: how long until it starts when the thread is idle, and how many empty jobs go
// through in a second when one or two threads hand them over. The peers are oneTBB's task_group, GLib's pool with one
// thread, and a thread with a queue and a condition variable. Each job is an object on the heap with every peer.

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

/// Its task allocates itself.
class OneTBB {
  public:
    ~OneTBB() { m_group.wait(); }
    void Run(Work work) { m_group.run(work); }

  private:
    oneapi::tbb::task_group m_group;
};

class GLibPool {
  public:
    GLibPool() : m_pool(g_thread_pool_new(&Serve, nullptr, 1, TRUE, nullptr)) {}
    GLibPool(GLibPool const&) = delete;
    GLibPool& operator=(GLibPool const&) = delete;
    ~GLibPool() { g_thread_pool_free(m_pool, FALSE, TRUE); }
    void Run(Work work) { g_thread_pool_push(m_pool, new Work(work), nullptr); }

  private:
    static void Serve(gpointer data, gpointer /*userData*/) {
        std::unique_ptr<Work> const work(static_cast<Work*>(data));
        (*work)();
    }

    GThreadPool* m_pool;
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
            m_queue.emplace_back([job = std::make_shared<Work>(work)] { (*job)(); });
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

/// So many threads hand over jobs, one of them being this one.
template <class Server>
void EmptyJobs(benchmark::State& state) {
    ms_bVerbose = false;
    constexpr long kJobs = 10'000; // fewer than our queue has room for
    long const producers = state.range(0);
    Server server;
    bench_support::Meter meter(state);
    for (auto _ : state) {
        std::atomic<long> done{0};
        auto const produce = [&] {
            for (long i = 0; i < kJobs / producers; ++i) {
                server.Run(Work{nullptr, &done});
            }
        };
        std::barrier start(producers);
        std::vector<std::thread> others;
        for (long i = 1; i < producers; ++i) {
            others.emplace_back([&] {
                start.arrive_and_wait();
                produce();
            });
        }
        meter.Start();
        start.arrive_and_wait();
        produce();
        while (done.load() < kJobs) {
            std::this_thread::yield();
        }
        meter.Stop();
        for (auto& other : others) {
            other.join();
        }
    }
    meter.Report(state.iterations() * kJobs);
}

BENCHMARK(StartOnIdleServer<OurServer>)->UseManualTime()->Iterations(300);
BENCHMARK(StartOnIdleServer<ConditionVariable>)->UseManualTime()->Iterations(300);
BENCHMARK(StartOnIdleServer<GLibPool>)->UseManualTime()->Iterations(300);
BENCHMARK(StartOnIdleServer<OneTBB>)->UseManualTime()->Iterations(300);
BENCHMARK(EmptyJobs<OurServer>)->Arg(1)->Arg(2)->UseManualTime();
BENCHMARK(EmptyJobs<ConditionVariable>)->Arg(1)->Arg(2)->UseManualTime();
BENCHMARK(EmptyJobs<GLibPool>)->Arg(1)->Arg(2)->UseManualTime();
BENCHMARK(EmptyJobs<OneTBB>)->Arg(1)->Arg(2)->UseManualTime();

} // namespace
