// Strings against std::string, std::filesystem::path and the bare allocator.

#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>

namespace {

using namespace VFoundation;

constexpr long kAppends = (1 << 20) / 8;

void AppendOneMebibyte_VString(benchmark::State& state) {
    for (auto _ : state) {
        VString text;
        for (long i = 0; i < kAppends; ++i) {
            text.Append("12345678");
        }
        benchmark::DoNotOptimize(text.CString());
    }
}
BENCHMARK(AppendOneMebibyte_VString)->Unit(benchmark::kMicrosecond);

void AppendOneMebibyte_StdString(benchmark::State& state) {
    for (auto _ : state) {
        std::string text;
        for (long i = 0; i < kAppends; ++i) {
            text.append("12345678");
        }
        benchmark::DoNotOptimize(text.data());
    }
}
BENCHMARK(AppendOneMebibyte_StdString)->Unit(benchmark::kMicrosecond);

constexpr char const* kLine = "a string of some forty characters in all";

void NewAndRelease(benchmark::State& state) {
    for (auto _ : state) {
        VString* const text = VString::NewString(kLine);
        benchmark::DoNotOptimize(text->CString());
        text->Release();
    }
}

void NewAndRelease_Pooled(benchmark::State& state) {
    VString::TheClass();
    VString::InitializeClass();
    VString::ms_bRecyclingEnabled = true;
    NewAndRelease(state);
}
BENCHMARK(NewAndRelease_Pooled);

void NewAndRelease_Unpooled(benchmark::State& state) {
    VString::ms_bRecyclingEnabled = false;
    NewAndRelease(state);
    VString::ms_bRecyclingEnabled = true;
}
BENCHMARK(NewAndRelease_Unpooled);

/// The blocks alone: one for the object, one for its buffer, the text copied.
void NewAndRelease_Malloc(benchmark::State& state) {
    for (auto _ : state) {
        void* const object = std::malloc(sizeof(VString));
        char* const buffer = static_cast<char*>(std::malloc(128));
        benchmark::DoNotOptimize(object);
        std::memcpy(buffer, kLine, std::strlen(kLine) + 1);
        benchmark::DoNotOptimize(buffer);
        benchmark::ClobberMemory();
        std::free(buffer);
        std::free(object);
    }
}
BENCHMARK(NewAndRelease_Malloc);

void NewAndRelease_StdString(benchmark::State& state) {
    for (auto _ : state) {
        auto* const text = new std::string(kLine);
        benchmark::DoNotOptimize(text->data());
        delete text;
    }
}
BENCHMARK(NewAndRelease_StdString);

// A path: assigned, three components appended, two removed.

void EditPath_VString(benchmark::State& state) {
    VString path;
    for (auto _ : state) {
        path = "/opt/companion/Launcher.app";
        path.AppendPathComponent("Contents");
        path.AppendPathComponent("Resources");
        path.AppendPathComponent("AuthIcon.png");
        path.DeleteLastPathComponent();
        path.DeleteLastPathComponent();
        benchmark::DoNotOptimize(path.CString());
    }
}
BENCHMARK(EditPath_VString);

void EditPath_StdString(benchmark::State& state) {
    std::string path;
    auto const append = [&path](char const* component) {
        if (!path.empty() && path.back() != '/') {
            path += '/';
        }
        path += component;
    };
    for (auto _ : state) {
        path = "/opt/companion/Launcher.app";
        append("Contents");
        append("Resources");
        append("AuthIcon.png");
        path.erase(path.rfind('/'));
        path.erase(path.rfind('/'));
        benchmark::DoNotOptimize(path.data());
    }
}
BENCHMARK(EditPath_StdString);

void EditPath_Filesystem(benchmark::State& state) {
    std::filesystem::path path;
    for (auto _ : state) {
        path = "/opt/companion/Launcher.app";
        path /= "Contents";
        path /= "Resources";
        path /= "AuthIcon.png";
        path = path.parent_path();
        path = path.parent_path();
        benchmark::DoNotOptimize(path.c_str());
    }
}
BENCHMARK(EditPath_Filesystem);

// Last, because a process never counts as single-threaded again: the same with a second thread in existence.

void StartThread(benchmark::State const&) {
    std::thread([] {}).join();
}

BENCHMARK(NewAndRelease_Pooled)->Name("NewAndRelease_Pooled_ThreadsSeen")->Setup(StartThread);
BENCHMARK(NewAndRelease_Unpooled)->Name("NewAndRelease_Unpooled_ThreadsSeen")->Setup(StartThread);
BENCHMARK(NewAndRelease_Malloc)->Name("NewAndRelease_Malloc_ThreadsSeen")->Setup(StartThread);

} // namespace
