#include "foundation/threads/VLock.h"
#include "foundation/threads/VSemaphore.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <semaphore.h>
#include <string>
#include <thread>
#include <unistd.h>

// Handing one unit to a thread that waits for it, there and back, and the operations without a waiting thread. The
// peers are a condition variable, and the system's semaphore with its kernel wait.

namespace {

using namespace VFoundation;

/// A semaphore whose name lives no longer than it does.
class OurSemaphore {
  public:
    explicit OurSemaphore(char const* purpose)
        : m_name("VFoundationBench." + std::to_string(getpid()) + purpose), m_semaphore(1, m_name.c_str()) {}
    OurSemaphore(OurSemaphore const&) = delete;
    OurSemaphore& operator=(OurSemaphore const&) = delete;
    ~OurSemaphore() { sem_unlink(m_name.c_str()); }
    void Post() { m_semaphore.ReleaseSemaphore(1, nullptr); }
    void Wait() {
        while (!m_semaphore.WaitForSemaphore(20)) {
        }
    }

  private:
    std::string m_name;
    VSemaphore m_semaphore;
};

class SystemSemaphore {
  public:
    explicit SystemSemaphore(char const* /*purpose*/) { sem_init(&m_semaphore, 0, 0); }
    ~SystemSemaphore() { sem_destroy(&m_semaphore); }
    void Post() { sem_post(&m_semaphore); }
    void Wait() { sem_wait(&m_semaphore); }

  private:
    sem_t m_semaphore{};
};

class ConditionVariable {
  public:
    explicit ConditionVariable(char const* /*purpose*/) {}
    void Post() {
        {
            std::lock_guard const lock(m_mutex);
            ++m_units;
        }
        m_condition.notify_one();
    }
    void Wait() {
        std::unique_lock lock(m_mutex);
        m_condition.wait(lock, [this] { return m_units > 0; });
        --m_units;
    }

  private:
    std::mutex m_mutex;
    std::condition_variable m_condition;
    int m_units = 0;
};

template <class Signal>
void ThereAndBack(benchmark::State& state) {
    Signal there("there");
    Signal back("back");
    std::atomic<bool> running{true};
    std::thread partner([&] {
        for (there.Wait(); running; there.Wait()) {
            back.Post();
        }
    });
    for (auto _ : state) {
        there.Post();
        back.Wait();
    }
    running = false;
    there.Post();
    partner.join();
}
BENCHMARK(ThereAndBack<OurSemaphore>)->UseRealTime();
BENCHMARK(ThereAndBack<ConditionVariable>)->UseRealTime();
BENCHMARK(ThereAndBack<SystemSemaphore>)->UseRealTime();

template <class Signal>
void PostAndWaitAlone(benchmark::State& state) {
    Signal signal("alone");
    for (auto _ : state) {
        signal.Post();
        signal.Wait();
    }
}
BENCHMARK(PostAndWaitAlone<OurSemaphore>);
BENCHMARK(PostAndWaitAlone<ConditionVariable>);
BENCHMARK(PostAndWaitAlone<SystemSemaphore>);

void LockAndUnlock_VLock(benchmark::State& state) {
    VLock lock;
    for (auto _ : state) {
        benchmark::DoNotOptimize(lock.TryLock(20));
        lock.Unlock();
    }
}
BENCHMARK(LockAndUnlock_VLock);

void LockAndUnlock_TimedMutex(benchmark::State& state) {
    std::timed_mutex lock;
    for (auto _ : state) {
        benchmark::DoNotOptimize(lock.try_lock_for(std::chrono::milliseconds(20)));
        lock.unlock();
    }
}
BENCHMARK(LockAndUnlock_TimedMutex);

} // namespace
