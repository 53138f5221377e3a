#pragma once

#include "foundation/log/VLog.h"

namespace VFoundation {

/// The log that a line of this thread goes to, kept alive while it does: the log that the thread is just
/// destroying if there is one, else the default log, which is made when there is none. Null while the log is
/// switched off.
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
    /// Takes the default log as it is; false when one should be made.
    bool Settle();

    VLog* m_log;
    bool m_retained = false;
};

} // namespace VFoundation
