#include "foundation/strings/values/SRect.h"

#include "foundation/strings/values/internal/GeometryText.h"

#include <array>

namespace VFoundation {

void SRect::RectToString(char* buffer, unsigned long size) const {
    WriteNumbers(buffer, size, std::array{left, top, right, bottom});
}

bool SRect::RectFromString(char const* text) {
    std::array<std::int32_t, 4> numbers{};
    if (!ReadNumbers(text, numbers)) {
        return false;
    }
    *this = {numbers[0], numbers[1], numbers[2], numbers[3]};
    return true;
}

} // namespace VFoundation
