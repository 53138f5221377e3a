#pragma once

#include "foundation/core/Export.h"

#include <cfenv>

namespace VFoundation {

/// Sets the rounding direction of floating-point arithmetic for a scope, and restores the whole
/// floating-point environment at its end.
///
/// It affects code compiled with `-frounding-math`, or whose values the compiler does not know.
///
/// Ownership: lives on the stack.
/// Threads: affects the calling thread; construct and destroy on the same one, innermost first.
class VFOUNDATION_API VFpuMode {
  public:
    enum RoundMode : int { kDownward = 0, kToNearest = 1, kUpward = 2, kTowardZero = 3 };

    /// Any other value leaves the direction as it is.
    explicit VFpuMode(RoundMode mode) noexcept;
    VFpuMode(VFpuMode const&) = delete;
    VFpuMode& operator=(VFpuMode const&) = delete;
    ~VFpuMode();

  private:
    RoundMode m_mode;
    std::fenv_t m_saved;
};

} // namespace VFoundation
