#include "foundation/host/internal/LocalTime.h"

#include <limits>

namespace VFoundation {

bool LocalTime(long long seconds, std::tm& result) noexcept {
    static_assert(std::numeric_limits<std::time_t>::digits >= std::numeric_limits<long long>::digits);
    std::time_t const time{seconds};
    return ::localtime_r(&time, &result) != nullptr;
}

} // namespace VFoundation
