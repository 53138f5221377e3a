#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Mutex.h"

#include <cstdint>
#include <string>
#include <vector>

namespace VFoundation {

/// Records logging contexts with their times, so that a program's nested sections can be looked at:
///
///     VContextTrace trace;
///     trace.Start();
///     ...                                      // VLog::StartLoggingContext, VLog::VLogContext
///     trace.Stop();
///     trace.WriteTraceEvents("app.json");      // for viewers of the Trace Event format
///     trace.WriteSVG("app.svg");               // a picture, for browsers
///
/// Contexts count that end while the trace records, whichever log they belong to, and whether or not their lines are
/// written; one that began earlier is shown from the start of the recording. Each belongs to the thread that ends it.
/// One trace records at a time.
///
/// Cost: a context costs a lock and a copy of its name more while a trace records, one atomic load while none does.
///
/// Failures: contexts beyond `kMostContexts`, and those that find no memory, are counted (`DroppedContexts`).
/// Threads: any thread may call any operation; the destructor runs alone.
class VFOUNDATION_API VContextTrace {
  public:
    static constexpr std::size_t kMostContexts = 1'000'000;

    VContextTrace() = default;
    VContextTrace(VContextTrace const&) = delete;
    VContextTrace& operator=(VContextTrace const&) = delete;
    /// Stops.
    ~VContextTrace();

    /// Forgets what was recorded and records. False when this or another trace records already.
    bool Start();
    /// Nothing when it does not record.
    void Stop();

    long ContextCount() const;
    long DroppedContexts() const;

    /// Writes the contexts as complete events of the Trace Event format (JSON, times in microseconds, threads numbered
    /// from 1). Bytes of a name that are not UTF-8 become U+FFFD. False, with the system's reason in `errno`, when the
    /// file cannot be written whole; it is then removed. May throw `std::bad_alloc`.
    bool WriteTraceEvents(char const* path) const;
    /// Writes a picture: a row for each depth of nesting, grouped by thread; the same failures.
    bool WriteSVG(char const* path) const;

    /// One context, in nanoseconds since the start of the recording.
    struct Section {
        std::string name;
        std::uint64_t start;
        std::uint64_t duration;
        int thread; // from 1
    };

  private:
    friend struct ContextTraceHook;

    void Record(char const* name, std::uint64_t start, std::uint64_t end) noexcept;
    std::vector<Section> Sorted() const;

    mutable detail::Mutex m_lock;
    std::vector<Section> m_sections VFOUNDATION_GUARDED_BY(m_lock);
    std::vector<std::uintptr_t> m_threads VFOUNDATION_GUARDED_BY(m_lock); // their marks
    std::uint64_t m_start VFOUNDATION_GUARDED_BY(m_lock) = 0;
    long m_dropped VFOUNDATION_GUARDED_BY(m_lock) = 0;
};

} // namespace VFoundation
