#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VObjectRef.h"

#include <benchmark/benchmark.h>

#include <malloc.h>
#include <memory>
#include <vector>

// A million appended pointers, from empty to freed: once with memory that the allocator keeps from round to
// round, once with memory that comes fresh from the system, as in a program that builds its list once.

namespace {

using namespace VFoundation;

constexpr long kCount = 1000000;

void WarmOrFresh(benchmark::State& state) {
    // A fixed threshold makes the allocator map and unmap each large block.
    bool const fresh = state.range(0) != 0;
    mallopt(M_MMAP_THRESHOLD, fresh ? 128 * 1024 : 1 << 30);
    mallopt(M_TRIM_THRESHOLD, fresh ? 128 * 1024 : 1 << 30);
    state.SetLabel(fresh ? "fresh memory" : "warm memory");
}

/// Keeps the compiler from holding a container in registers, which a member of an object never is.
template <class T>
void LivesInMemory(T* container) {
    benchmark::DoNotOptimize(container);
    benchmark::ClobberMemory();
}

class Element : public Registered<Element, VObject> {
  public:
    static constexpr char const* kClassName = "BenchElement";
    static inline VClass* ms_theClass = nullptr;
    explicit Element(VClass* cls = nullptr) : Registered(cls) {}
    static Element* New() { return new Element; }
};

void PtrArray(benchmark::State& state) {
    WarmOrFresh(state);
    int value = 0;
    for (auto _ : state) {
        VPtrArray array(false);
        LivesInMemory(&array);
        for (long i = 0; i < kCount; ++i) {
            array.AddPtr(&value);
        }
        benchmark::DoNotOptimize(array.PtrAtIndex(kCount - 1));
    }
}

void Vector(benchmark::State& state) {
    WarmOrFresh(state);
    int value = 0;
    for (auto _ : state) {
        std::vector<void*> array;
        LivesInMemory(&array);
        for (long i = 0; i < kCount; ++i) {
            array.push_back(&value);
        }
        benchmark::DoNotOptimize(array.back());
    }
}

void ObjectArray(benchmark::State& state) {
    WarmOrFresh(state);
    auto const object = VObjectRef<VObject>::Adopt(Element::New());
    for (auto _ : state) {
        VObjectArray array;
        LivesInMemory(&array);
        for (long i = 0; i < kCount; ++i) {
            array.AddObject(object.Get());
        }
        benchmark::DoNotOptimize(array.ObjectAtIndex(kCount - 1));
    }
}

/// The same with the means of the standard library: a vector of counted references.
void VectorOfShared(benchmark::State& state) {
    WarmOrFresh(state);
    auto const object = std::make_shared<int>(0);
    for (auto _ : state) {
        std::vector<std::shared_ptr<int>> array;
        LivesInMemory(&array);
        for (long i = 0; i < kCount; ++i) {
            array.push_back(object);
        }
        benchmark::DoNotOptimize(array.back());
    }
}

/// The same by hand: no container does it with less.
void VectorAndRetain(benchmark::State& state) {
    WarmOrFresh(state);
    auto const object = VObjectRef<VObject>::Adopt(Element::New());
    for (auto _ : state) {
        std::vector<VObject*> array;
        LivesInMemory(&array);
        for (long i = 0; i < kCount; ++i) {
            array.push_back(object.Get());
            object->Retain();
        }
        benchmark::DoNotOptimize(array.back());
        for (VObject* const element : array) {
            element->Release();
        }
    }
}

BENCHMARK(PtrArray)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(Vector)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(ObjectArray)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(VectorOfShared)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(VectorAndRetain)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

} // namespace
