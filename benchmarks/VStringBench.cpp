// Strings against std::string, QString, GString, std::filesystem::path and the bare allocator.

#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/strings/VString.h"

#include <QString>
#include <benchmark/benchmark.h>
#include <glib.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>

namespace {

using namespace VFoundation;

/// As a program does, before it has threads.
struct Library {
    Library() { InitializeLibrary(false); }
};
Library const s_library;

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

/// Read at run time: no compiler may know the lengths of the texts.
char const* volatile s_short = "twelve chars";
char const* volatile s_line = "a string of some forty characters in all";

// A string on the stack.

void StackString_VString(benchmark::State& state) {
    for (auto _ : state) {
        VString const text(s_short);
        benchmark::DoNotOptimize(text.CString());
    }
}
BENCHMARK(StackString_VString);

void StackString_StdString(benchmark::State& state) {
    for (auto _ : state) {
        std::string const text(s_short);
        benchmark::DoNotOptimize(text.data());
    }
}
BENCHMARK(StackString_StdString);

void StackString_QString(benchmark::State& state) {
    for (auto _ : state) {
        QString const text = QString::fromLatin1(s_short);
        benchmark::DoNotOptimize(text.data());
    }
}
BENCHMARK(StackString_QString);

void StackString_GString(benchmark::State& state) {
    for (auto _ : state) {
        GString* const text = g_string_new(s_short);
        benchmark::DoNotOptimize(text->str);
        g_string_free(text, TRUE);
    }
}
BENCHMARK(StackString_GString);

// A hundred characters, one after the other, in a string that has room for them.

constexpr int kCharacters = 100;

template <class Clear, class Append>
void AppendCharacters(benchmark::State& state, Clear clear, Append append) {
    char character = 'x';
    for (auto _ : state) {
        clear();
        for (int i = 0; i < kCharacters; ++i) {
            benchmark::DoNotOptimize(character);
            append(character);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * kCharacters);
}

void AppendCharacter_VString(benchmark::State& state) {
    VString text;
    AppendCharacters(
        state, [&] { text = ""; }, [&](char character) { text << character; });
}
BENCHMARK(AppendCharacter_VString);

void AppendCharacter_StdString(benchmark::State& state) {
    std::string text;
    AppendCharacters(
        state, [&] { text.clear(); }, [&](char character) { text += character; });
}
BENCHMARK(AppendCharacter_StdString);

void AppendCharacter_QString(benchmark::State& state) {
    QString text;
    text.reserve(kCharacters);
    AppendCharacters(
        state, [&] { text.resize(0); }, [&](char character) { text += QLatin1Char(character); });
}
BENCHMARK(AppendCharacter_QString);

void AppendCharacter_GString(benchmark::State& state) {
    GString* const text = g_string_new(nullptr);
    AppendCharacters(
        state, [&] { g_string_truncate(text, 0); },
        [&](char character) { g_string_append_c(text, character); });
    g_string_free(text, TRUE);
}
BENCHMARK(AppendCharacter_GString);

// A string object made and released.

void NewAndRelease(benchmark::State& state) {
    for (auto _ : state) {
        VString* const text = VString::NewString(s_line);
        benchmark::DoNotOptimize(text->CString());
        text->Release();
    }
}

void NewAndRelease_Pooled(benchmark::State& state) {
    if (state.thread_index() == 0) {
        VString::TheClass();
        VString::InitializeClass();
        VString::ms_bRecyclingEnabled = true;
    }
    NewAndRelease(state);
}
BENCHMARK(NewAndRelease_Pooled);

void NewAndRelease_Unpooled(benchmark::State& state) {
    VString::ms_bRecyclingEnabled = false;
    NewAndRelease(state);
    VString::ms_bRecyclingEnabled = true;
}
BENCHMARK(NewAndRelease_Unpooled);

/// The blocks alone: one for an object, one for its buffer, the text copied.
void NewAndRelease_Malloc(benchmark::State& state) {
    for (auto _ : state) {
        void* const object = std::malloc(64);
        char* const buffer = static_cast<char*>(std::malloc(128));
        benchmark::DoNotOptimize(object);
        char const* const line = s_line;
        std::memcpy(buffer, line, std::strlen(line) + 1);
        benchmark::DoNotOptimize(buffer);
        benchmark::ClobberMemory();
        std::free(buffer);
        std::free(object);
    }
}
BENCHMARK(NewAndRelease_Malloc);

void NewAndRelease_StdString(benchmark::State& state) {
    for (auto _ : state) {
        auto* const text = new std::string(s_line);
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

void EditPath_GString(benchmark::State& state) {
    GString* const path = g_string_new(nullptr);
    auto const append = [path](char const* component) {
        if (path->len > 0 && path->str[path->len - 1] != '/') {
            g_string_append_c(path, '/');
        }
        g_string_append(path, component);
    };
    auto const cut = [path] {
        g_string_truncate(path, static_cast<gsize>(std::strrchr(path->str, '/') - path->str));
    };
    for (auto _ : state) {
        g_string_assign(path, "/opt/companion/Launcher.app");
        append("Contents");
        append("Resources");
        append("AuthIcon.png");
        cut();
        cut();
        benchmark::DoNotOptimize(path->str);
    }
    g_string_free(path, TRUE);
}
BENCHMARK(EditPath_GString);

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

// Last, because a process never counts as single-threaded again: the same with a second thread in existence, and on
// two threads at once.

void StartThread(benchmark::State const&) {
    std::thread([] {}).join();
}

BENCHMARK(StackString_VString)->Name("StackString_VString_ThreadsSeen")->Setup(StartThread);
BENCHMARK(NewAndRelease_Pooled)->Name("NewAndRelease_Pooled_ThreadsSeen")->Setup(StartThread);
BENCHMARK(NewAndRelease_Unpooled)->Name("NewAndRelease_Unpooled_ThreadsSeen")->Setup(StartThread);
BENCHMARK(NewAndRelease_Malloc)->Name("NewAndRelease_Malloc_ThreadsSeen")->Setup(StartThread);
BENCHMARK(NewAndRelease_Pooled)->Name("NewAndRelease_Pooled_Both")->Threads(2);
BENCHMARK(NewAndRelease_Malloc)->Name("NewAndRelease_Malloc_Both")->Threads(2);
BENCHMARK(NewAndRelease_StdString)->Name("NewAndRelease_StdString_Both")->Threads(2);

} // namespace
