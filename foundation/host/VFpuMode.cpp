#include "foundation/host/VFpuMode.h"

namespace VFoundation {

VFpuMode::VFpuMode(RoundMode mode) noexcept : m_mode(mode) {
    std::fegetenv(&m_saved);
    constexpr int kDirections[] = {FE_DOWNWARD, FE_TONEAREST, FE_UPWARD, FE_TOWARDZERO};
    if (m_mode >= kDownward && m_mode <= kTowardZero) {
        std::fesetround(kDirections[m_mode]);
    }
}

VFpuMode::~VFpuMode() {
    std::fesetenv(&m_saved);
}

} // namespace VFoundation
