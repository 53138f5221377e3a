#pragma once

#include "foundation/numerics/VFloatVector.h"

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace testing_support {

constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kLargest = std::numeric_limits<float>::max();

inline VFoundation::VFloatVector VectorOf(std::initializer_list<float> elements) {
    VFoundation::VFloatVector vector(static_cast<long>(elements.size()));
    std::copy(elements.begin(), elements.end(), vector.Elements());
    return vector;
}

} // namespace testing_support
