#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"

#include <atomic>
#include <cstdint>

namespace VFoundation {

/// A timer on the system's monotonic clock: setting the calendar clock does not move it.
///
/// DELIBERATE: there is no stop; `GetElapsedTime` goes on counting from the last start, and from the clock's
/// own start for a watch that was never started.
///
/// Ownership: by reference count; also usable as a member or a local.
/// Threads: one thread at a time; `GetElapsedTime` from any thread while none starts it.
class VFOUNDATION_API VStopWatch : public Registered<VStopWatch, VObject> {
  public:
    static constexpr char const* kClassName = "VStopWatch";
    static VClass* ms_theClass;

    /// With true the watch is started.
    explicit VStopWatch(bool start = false) : VStopWatch(nullptr, start) {}
    VStopWatch(VStopWatch const&) = delete;
    VStopWatch& operator=(VStopWatch const&) = delete;
    ~VStopWatch() override = default;
    static VStopWatch* New();
    /// Reads the clock's time base.
    static void InitializeClass();
    /// The time base stays, for the watches that are still running.
    static void UninitializeClass() {}

    /// Starts, or starts again from zero.
    void StartTimer();
    /// Seconds since the last start.
    double GetElapsedTime() const;
    /// True once started.
    bool IsRunning() const noexcept { return m_running; }

  protected:
    explicit VStopWatch(VClass* cls, bool start = false);

  private:
    /// Nanoseconds of one tick, as a fraction. Relaxed: written once, with what the system has had all along.
    static std::atomic<std::uint32_t> ms_numerator;
    static std::atomic<std::uint32_t> ms_denominator;

    std::uint64_t m_start = 0;
    bool m_running = false;
};

} // namespace VFoundation
