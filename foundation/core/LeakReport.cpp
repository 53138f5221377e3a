#include "foundation/core/LeakReport.h"

#include "foundation/core/Mutex.h"
#include "foundation/core/VClass.h"
#include "foundation/core/internal/CallStack.h"
#include "foundation/core/internal/LeakNotes.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <unordered_map>
#include <utility>

namespace VFoundation {

namespace {

struct ClassNotes {
    std::unordered_map<VObject const*, std::vector<void*>> living; // with the call stack, if asked for
    std::size_t peak = 0;
};
struct Notes {
    std::map<std::string, ClassNotes, std::less<>> classes;
};

// No destructor runs at the end of the process: objects may be destroyed after it.
constinit detail::Mutex s_lock;
Notes* s_notes VFOUNDATION_GUARDED_BY(s_lock) = nullptr;
// relaxed: switches; the notes themselves are looked up under the lock
constinit std::atomic<bool> s_isNoting{false};
constinit std::atomic<bool> s_withStacks{false};

constexpr int kNotingFrames = 2; // `NoteBorn` and the constructor of `VObject`

/// Puts other notes in the place of the present ones, which are freed after the lock.
void Replace(std::unique_ptr<Notes> notes) {
    detail::MutexLock const lock(s_lock);
    s_isNoting.store(notes != nullptr, std::memory_order_relaxed);
    Notes* const former = std::exchange(s_notes, notes.release());
    notes.reset(former);
}

} // namespace

bool LeakReport::Start(eDetail detail) {
    if constexpr (LeakNotes::kAreTaken) {
        s_withStacks.store(detail == eCallStacks, std::memory_order_relaxed);
        Replace(std::make_unique<Notes>());
    }
    return LeakNotes::kAreTaken;
}

void LeakReport::Stop() {
    Replace(nullptr);
}

std::vector<LeakReport::Entry> LeakReport::Entries() {
    std::vector<Entry> entries;
    detail::MutexLock const lock(s_lock);
    if (!s_notes) {
        return entries;
    }
    for (auto const& [name, notes] : s_notes->classes) {
        if (notes.living.empty()) {
            continue;
        }
        entries.push_back({name, static_cast<long>(notes.living.size()), static_cast<long>(notes.peak), {}});
        for (auto const& [object, stack] : notes.living) {
            if (!stack.empty()) {
                entries.back().callStacks.push_back(CallStack::Text(stack));
            }
        }
    }
    return entries;
}

std::string LeakReport::Text() {
    std::string text;
    for (Entry const& entry : Entries()) {
        text += entry.className + ": " + std::to_string(entry.alive) + " alive, " +
                std::to_string(entry.peak) + " at most\n";
        for (std::string const& stack : entry.callStacks) {
            text += "  made by\n" + stack;
        }
    }
    return text;
}

void LeakNotes::NoteBorn(VObject const* object, VClass const* cls) noexcept {
    if (!s_isNoting.load(std::memory_order_relaxed)) {
        return;
    }
    try {
        std::vector<void*> stack;
        if (s_withStacks.load(std::memory_order_relaxed)) {
            stack = CallStack::Capture(kNotingFrames);
        }
        detail::MutexLock const lock(s_lock);
        if (s_notes) {
            ClassNotes& notes = s_notes->classes[cls->Name()];
            notes.living[object] = std::move(stack);
            notes.peak = std::max(notes.peak, notes.living.size());
        }
    } catch (std::bad_alloc const&) { // the object is missing in the report
    }
}

void LeakNotes::NoteGone(VObject const* object, VClass const* cls) noexcept {
    if (!s_isNoting.load(std::memory_order_relaxed)) {
        return;
    }
    detail::MutexLock const lock(s_lock);
    if (!s_notes) {
        return;
    }
    auto const notes = s_notes->classes.find(std::string_view(cls->Name()));
    if (notes != s_notes->classes.end()) {
        notes->second.living.erase(object);
    }
}

} // namespace VFoundation
