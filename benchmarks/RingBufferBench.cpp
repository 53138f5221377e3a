#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/VObjectRef.h"

#include <benchmark/benchmark.h>
#include <boost/lockfree/queue.hpp>

#include <atomic>
#include <sched.h>
#include <thread>
#include <vector>

// Push and pop of counted objects: the ring beside boost::lockfree::queue, whose caller retains and releases.

namespace {

using namespace VFoundation;

constexpr unsigned long kCapacity = 1024;
constexpr long kItems = 200000;

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

/// The first two run while the process has a single thread, as a pool of recycled objects often does; from
/// then on it counts as a process with threads.
template <class Queue>
void OneThread(benchmark::State& state) {
    if (state.range(0) != 0) {
        std::thread([] {}).join();
        state.SetLabel("in a process with threads");
    }
    Queue queue;
    auto const element = VObjectRef<Element>::Adopt(Element::New());
    for (auto _ : state) {
        queue.Push(element.Get());
        queue.Pop()->Release();
    }
    state.SetItemsProcessed(state.iterations());
}

template <class Queue>
void Threads(benchmark::State& state) {
    long const pairs = state.range(0);
    for (auto _ : state) {
        Queue queue;
        std::atomic<long> left{kItems};
        std::vector<std::thread> threads;
        for (long i = 0; i < pairs; ++i) {
            threads.emplace_back([&queue, pairs] {
                auto const element = VObjectRef<Element>::Adopt(Element::New());
                for (long n = kItems / pairs; n > 0; --n) {
                    while (!queue.Push(element.Get())) {
                        sched_yield();
                    }
                }
            });
            threads.emplace_back([&queue, &left] {
                while (left.load(std::memory_order_relaxed) > 0) {
                    if (Element* const element = queue.Pop()) {
                        element->Release();
                        left.fetch_sub(1, std::memory_order_relaxed);
                    } else {
                        sched_yield();
                    }
                }
            });
        }
        for (auto& thread : threads) {
            thread.join();
        }
    }
    state.SetItemsProcessed(state.iterations() * kItems);
}

BENCHMARK(OneThread<Ring>)->Arg(0);
BENCHMARK(OneThread<BoostQueue>)->Arg(0);
BENCHMARK(OneThread<Ring>)->Arg(1);
BENCHMARK(OneThread<BoostQueue>)->Arg(1);
BENCHMARK(Threads<Ring>)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(Threads<BoostQueue>)->Arg(1)->Arg(2)->UseRealTime()->Unit(benchmark::kMillisecond);

} // namespace
