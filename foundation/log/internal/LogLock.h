#pragma once

#include <mutex>

namespace VFoundation {

/// Guards which log is the default one, the stacks of open contexts, and which context belongs to which log.
/// Held for a few instructions; no line is written and no object dies under it. Re-entrant, so that an
/// allocation that fails under it may trace.
std::recursive_mutex& LogLock() noexcept;

} // namespace VFoundation
