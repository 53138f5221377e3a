#pragma once

#include "foundation/log/VLogFile.h"

#include <ctime>

namespace VFoundation {

/// When a log file is put aside, and under which name. Internal.
///
/// Threads: one at a time.
class LogRotation {
  public:
    void Set(VLogFile::Rotation const& rotation) noexcept { m_rotation = rotation; }
    /// From a file of that size on, or after an attempt that failed, the next time is looked for.
    void Begin(long long size) noexcept;
    bool IsDue(long long size) const noexcept {
        return (m_rotation.bytes > 0 && size >= m_nextSize) ||
               (m_rotation.daily && std::time(nullptr) >= m_nextDay);
    }

    /// Renames the file, and before it those put aside earlier. False, and the file has its name, when that fails and
    /// when it is no regular file. May throw `std::bad_alloc`.
    bool PutAside(char const* path) const;
    /// Gives the file its name back.
    void TakeBack(char const* path) const;

  private:
    VLogFile::Rotation m_rotation;
    long long m_nextSize = 0;
    std::time_t m_nextDay = 0;
};

} // namespace VFoundation
