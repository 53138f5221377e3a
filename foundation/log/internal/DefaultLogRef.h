#pragma once

#include "foundation/log/VLog.h"

#include <utility>

namespace VFoundation {

/// Makes `log` the one that the lines of this thread go to for as long as the scope lasts: the default log, while the
/// reference to it is dropped and it may be destroyed. No new default log is made meanwhile.
class VLog::DyingLogScope {
  public:
    explicit DyingLogScope(VLog* log) noexcept : m_before(std::exchange(t_log, log)) {}
    DyingLogScope(DyingLogScope const&) = delete;
    DyingLogScope& operator=(DyingLogScope const&) = delete;
    ~DyingLogScope() { t_log = m_before; }

    static VLog* Current() noexcept { return t_log; }

  private:
    static constinit thread_local VLog* t_log;

    VLog* m_before;
};

/// The log that a line of this thread goes to, kept alive while it does: the dying one if the thread is in a
/// `DyingLogScope`, else the default log, which is made when there is none. Null while the log is switched off.
class VLog::DefaultLogRef {
  public:
    DefaultLogRef();
    DefaultLogRef(DefaultLogRef const&) = delete;
    DefaultLogRef& operator=(DefaultLogRef const&) = delete;
    ~DefaultLogRef();

    VLog* Get() const noexcept { return m_log; }
    VLog* operator->() const noexcept { return m_log; }
    explicit operator bool() const noexcept { return m_log != nullptr; }

  private:
    /// False when the log is switched on and there is no default log.
    bool TakeDefaultLog() VFOUNDATION_REQUIRES(ms_lock);

    VLog* m_log;
    bool m_retained = false;
};

} // namespace VFoundation
