#include "foundation/strings/values/SPoint.h"

#include "foundation/strings/values/internal/GeometryText.h"

#include <array>

namespace VFoundation {

void SPoint::PointToString(char* buffer, unsigned long size) const {
    WriteNumbers(buffer, size, std::array{x, y});
}

bool SPoint::PointFromString(char const* text) {
    std::array<std::int32_t, 2> numbers{};
    if (!ReadNumbers(text, numbers)) {
        return false;
    }
    *this = {numbers[0], numbers[1]};
    return true;
}

} // namespace VFoundation
