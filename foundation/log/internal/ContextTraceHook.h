#pragma once

namespace VFoundation {

/// How contexts reach the trace that records. Internal.
struct ContextTraceHook {
    /// A context of that name, so many seconds old, ends on this thread.
    static void ContextEnded(char const* name, double elapsedSeconds) noexcept;
};

} // namespace VFoundation
