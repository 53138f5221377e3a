#pragma once

#include "foundation/core/Export.h"
#include "foundation/messaging/VMessageCenter.h"

namespace VFoundation {

/// A message centre that is started, and stopped with the scope:
///
///     StartedCenter center;
///     auto const connection = VMessageCenter::Connect(center.Get(), knob, kTurned, [&](VMessage const& message) { ... });
///     ...
///     center->FinishCenter(); // delivers what is still queued
///
/// The destructor waits for a handler that is running, and nothing that goes wrong is passed on. What is still queued
/// then is dropped. Each of these centres keeps the memory of a thread's stack until the process ends, so make one for
/// the program and not one for each task.
///
/// Ownership: holds the centre.
/// Threads: made and destroyed by the centre's owner; the centre as `VMessageCenter` says.
class VFOUNDATION_API StartedCenter {
  public:
    /// For this process alone: the name of its job server is made up, and nothing of it stays in the system.
    explicit StartedCenter(int capacity = VMessageCenter::kDefaultCapacity, long sleepMilliseconds = 5);
    /// The name is that of a job server (`VJobServer`).
    explicit StartedCenter(char const* name, int capacity = VMessageCenter::kDefaultCapacity,
                           long sleepMilliseconds = 5);
    StartedCenter(StartedCenter const&) = delete;
    StartedCenter& operator=(StartedCenter const&) = delete;
    ~StartedCenter();

    [[nodiscard]] VMessageCenter* Get() const noexcept { return m_center.Get(); }
    VMessageCenter* operator->() const noexcept { return m_center.Get(); }
    VMessageCenter& operator*() const noexcept { return *m_center; }

  private:
    VObjectRef<VMessageCenter> m_center;
};

} // namespace VFoundation
