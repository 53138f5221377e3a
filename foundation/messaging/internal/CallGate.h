#pragma once

#include <atomic>
#include <cstdint>

namespace VFoundation {

/// Lets calls of a function through until it is closed, and then waits for those that are running. Internal.
///
/// Threads: any. The gate outlives its calls: whoever calls holds what the gate is part of.
class CallGate {
  public:
    /// One call, for as long as it runs.
    class Call {
      public:
        explicit Call(CallGate& gate) noexcept;
        Call(Call const&) = delete;
        Call& operator=(Call const&) = delete;
        ~Call();
        bool IsLetThrough() const noexcept { return m_isLetThrough; }

      private:
        friend class CallGate;

        CallGate& m_gate;
        Call const* const m_outer; // the call that runs around this one on the same thread
        bool m_isLetThrough;
    };

    /// From here on no call is let through.
    void Close() noexcept;
    /// Closes, and waits until no call is running. Inside one of them it returns at once.
    void CloseAndWait() noexcept;

  private:
    static constexpr std::uint32_t kClosed = std::uint32_t{1} << 31;

    static constinit thread_local Call const* s_innermost;

    std::atomic<std::uint32_t> m_running{0}; // calls, and `kClosed`
};

} // namespace VFoundation
