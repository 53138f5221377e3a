#include "benchmarks/Meter.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/VObjectRef.h"

#include <benchmark/benchmark.h>
#include <boost/lockfree/queue.hpp>
#include <concurrentqueue/concurrentqueue.h>

#include <barrier>
#include <cstddef>
#include <sched.h>
#include <thread>
#include <vector>

// Push and pop of counted objects: the ring beside boost::lockfree::queue and moodycamel::ConcurrentQueue, whose
// callers retain and release. The last one keeps the order of each producer only. All elements are different, as one
// element's count would cost more than the queue.

namespace {

using namespace VFoundation;

constexpr unsigned long kCapacity = 1024;
constexpr long kItems = 200'000;

class Element : public Registered<Element, VObject> {
  public:
    static constexpr char const* kClassName = "BenchElement";
    static inline VClass* ms_theClass = nullptr;
    explicit Element(VClass* cls = nullptr) : Registered(cls) {}
    static Element* New() { return new Element; }
};

class Ring {
  public:
    bool Push(Element* element) { return m_ring.Push(element); }
    Element* Pop() {
        Element* element = nullptr;
        return m_ring.Pop(&element) ? element : nullptr;
    }

  private:
    VObjectRingBufferTmpl<Element> m_ring{kCapacity};
};

class BoostQueue {
  public:
    bool Push(Element* element) {
        element->Retain();
        if (m_queue.bounded_push(element)) {
            return true;
        }
        element->Release();
        return false;
    }
    Element* Pop() {
        Element* element = nullptr;
        return m_queue.pop(element) ? element : nullptr;
    }

  private:
    boost::lockfree::queue<Element*> m_queue{kCapacity};
};

class MoodycamelQueue {
  public:
    bool Push(Element* element) {
        element->Retain();
        if (m_queue.try_enqueue(element)) { // allocates nothing, so it is bounded as the others are
            return true;
        }
        element->Release();
        return false;
    }
    Element* Pop() {
        Element* element = nullptr;
        return m_queue.try_dequeue(element) ? element : nullptr;
    }

  private:
    moodycamel::ConcurrentQueue<Element*> m_queue{kCapacity, 0, 8};
};

using Elements = std::vector<VObjectRef<Element>>;

Elements NewElements(long count) {
    Elements elements(static_cast<std::size_t>(count));
    for (auto& element : elements) {
        element.Allocate();
    }
    return elements;
}

/// The first ones run while the process has a single thread, as a pool of recycled objects often does; from
/// then on it counts as a process with threads.
template <class Queue>
void OneThread(benchmark::State& state) {
    if (state.range(0) != 0) {
        std::thread([] {}).join();
        state.SetLabel("in a process with threads");
    }
    Queue queue;
    Elements const elements = NewElements(64);
    std::size_t next = 0;
    for (auto _ : state) {
        queue.Push(elements[++next % 64].Get());
        queue.Pop()->Release();
    }
    state.SetItemsProcessed(state.iterations());
}

/// As many producers as consumers, each with the same share.
template <class Queue>
void Threads(benchmark::State& state) {
    long const pairs = state.range(0);
    long const share = kItems / pairs;
    Elements const elements = NewElements(share * pairs);
    bench_support::Meter meter(state);
    for (auto _ : state) {
        Queue queue;
        std::barrier start(2 * pairs + 1);
        std::barrier end(2 * pairs + 1);
        std::vector<std::thread> threads;
        for (long pair = 0; pair < pairs; ++pair) {
            threads.emplace_back([&, pair] {
                start.arrive_and_wait();
                for (long i = pair * share; i < (pair + 1) * share; ++i) {
                    while (!queue.Push(elements[static_cast<std::size_t>(i)].Get())) {
                        sched_yield();
                    }
                }
                end.arrive_and_wait();
            });
            threads.emplace_back([&] {
                start.arrive_and_wait();
                for (long left = share; left > 0;) {
                    if (Element* const element = queue.Pop()) {
                        element->Release();
                        --left;
                    } else {
                        sched_yield();
                    }
                }
                end.arrive_and_wait();
            });
        }
        meter.Start();
        start.arrive_and_wait();
        end.arrive_and_wait();
        meter.Stop();
        for (auto& thread : threads) {
            thread.join();
        }
    }
    meter.Report(state.iterations() * share * pairs);
}

BENCHMARK(OneThread<Ring>)->Arg(0);
BENCHMARK(OneThread<BoostQueue>)->Arg(0);
BENCHMARK(OneThread<MoodycamelQueue>)->Arg(0);
BENCHMARK(OneThread<Ring>)->Arg(1);
BENCHMARK(OneThread<BoostQueue>)->Arg(1);
BENCHMARK(OneThread<MoodycamelQueue>)->Arg(1);
BENCHMARK(Threads<Ring>)->Arg(1)->Arg(2)->Arg(4)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Threads<BoostQueue>)->Arg(1)->Arg(2)->Arg(4)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Threads<MoodycamelQueue>)->Arg(1)->Arg(2)->Arg(4)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
