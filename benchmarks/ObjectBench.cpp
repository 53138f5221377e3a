// Retain and release against a bare atomic pair, std::shared_ptr and boost::intrusive_ptr; creation by class name
// against an std::unordered_map of factories; pooled arrays and file records against the allocator. Each first with one
// thread alive, then with a second one, and the pools on two threads at once.

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VClass.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/host/VFileInfo.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"

#include <benchmark/benchmark.h>
#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <unordered_map>

namespace {

using namespace VFoundation;

struct Library {
    Library() { InitializeLibrary(false); }
};
Library const s_library;

/// From here on the process counts as one with several threads, for good.
void StartASecondThread() {
    static bool const started = [] {
        std::thread([] {}).join();
        return true;
    }();
    benchmark::DoNotOptimize(started);
}

void BareAtomicPair(benchmark::State& state) {
    std::atomic<int> count{1};
    for (auto _ : state) {
        count.fetch_add(1);
        benchmark::DoNotOptimize(count.fetch_sub(1));
    }
}

void RetainRelease(benchmark::State& state) {
    VObject* object = new VData(0);
    benchmark::DoNotOptimize(object);
    for (auto _ : state) {
        object->Retain();
        object->Release();
    }
    object->Release();
}

void SharedPtrCopy(benchmark::State& state) {
    auto const pointer = std::make_shared<int>(1);
    for (auto _ : state) {
        std::shared_ptr<int> copy(pointer);
        benchmark::DoNotOptimize(copy);
    }
}

struct Intrusive : boost::intrusive_ref_counter<Intrusive> {
    virtual ~Intrusive() = default;
};

void IntrusivePtrCopy(benchmark::State& state) {
    boost::intrusive_ptr<Intrusive> const pointer(new Intrusive);
    for (auto _ : state) {
        boost::intrusive_ptr<Intrusive> copy(pointer);
        benchmark::DoNotOptimize(copy);
    }
}

void CreateByClassName(benchmark::State& state) {
    for (auto _ : state) {
        VObject* const object = VClass::ClassForClassName("VData")->NewInstance();
        benchmark::DoNotOptimize(object);
        object->Release();
    }
}

/// Looks up text without making a string of it.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept {
        return std::hash<std::string_view>()(text);
    }
};

void CreateByUnorderedMap(benchmark::State& state) {
    std::unordered_map<std::string, std::function<VObject*()>, TextHash, std::equal_to<>> factories;
    auto const objects = VObjectRef<VPtrArray>::Adopt(VObject::TheClass()->SubClassesArray());
    for (long i = 0; i < objects->Count(); ++i) {
        factories[static_cast<VClass*>(objects->PtrAtIndex(i))->Name()] = [] { return new VData(0); };
    }
    for (auto _ : state) {
        VObject* const object = factories.find(std::string_view("VData"))->second();
        benchmark::DoNotOptimize(object);
        object->Release();
    }
}

void PooledArray(benchmark::State& state) {
    for (auto _ : state) {
        VObjectArray* const array = VObjectArray::NewObjectArray();
        benchmark::DoNotOptimize(array);
        array->Release();
    }
}

void PooledFileInfo(benchmark::State& state) {
    for (auto _ : state) {
        VFileInfo* const info = VFileInfo::NewFileInfo();
        benchmark::DoNotOptimize(info);
        info->Release();
    }
}

/// A block of the size of the object, which no code writes to.
template <class T>
void MallocFor(benchmark::State& state) {
    for (auto _ : state) {
        void* object = std::malloc(sizeof(T));
        benchmark::DoNotOptimize(object);
        std::free(object);
    }
}

void WithSecondThread(benchmark::State& state, void (*run)(benchmark::State&)) {
    StartASecondThread();
    run(state);
}

BENCHMARK(BareAtomicPair);
BENCHMARK(RetainRelease);
BENCHMARK(SharedPtrCopy);
BENCHMARK(IntrusivePtrCopy);
BENCHMARK(CreateByClassName);
BENCHMARK(CreateByUnorderedMap);
BENCHMARK(PooledArray);
BENCHMARK(MallocFor<VObjectArray>);
BENCHMARK(PooledFileInfo);
BENCHMARK(MallocFor<VFileInfo>);
BENCHMARK_CAPTURE(WithSecondThread, BareAtomicPair, BareAtomicPair);
BENCHMARK_CAPTURE(WithSecondThread, RetainRelease, RetainRelease);
BENCHMARK_CAPTURE(WithSecondThread, SharedPtrCopy, SharedPtrCopy);
BENCHMARK_CAPTURE(WithSecondThread, IntrusivePtrCopy, IntrusivePtrCopy);
BENCHMARK_CAPTURE(WithSecondThread, CreateByClassName, CreateByClassName);
BENCHMARK_CAPTURE(WithSecondThread, CreateByUnorderedMap, CreateByUnorderedMap);
BENCHMARK(PooledArray)->Threads(2);
BENCHMARK(MallocFor<VObjectArray>)->Threads(2);
BENCHMARK(PooledFileInfo)->Threads(2);
BENCHMARK(MallocFor<VFileInfo>)->Threads(2);

} // namespace
