#include "foundation/strings/values/internal/GeometryText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>
#include <string_view>

namespace VFoundation {

namespace {

constexpr std::size_t kMaxNumbers = 4;
constexpr std::string_view kBetween = ", ";

} // namespace

void WriteNumbers(char* buffer, unsigned long size, std::span<std::int32_t const> numbers) {
    if (!buffer || size == 0) {
        return;
    }
    std::array<char, kMaxNumbers*(11 + kBetween.size())> text{};
    char* end = text.data();
    for (std::int32_t const number : numbers) {
        if (end != text.data()) {
            end = std::copy(kBetween.begin(), kBetween.end(), end);
        }
        end = std::to_chars(end, text.data() + text.size(), number).ptr;
    }
    auto const count = std::min(static_cast<unsigned long>(end - text.data()), size - 1);
    std::memcpy(buffer, text.data(), count);
    buffer[count] = '\0';
}

bool ReadNumbers(char const* text, std::span<std::int32_t> numbers) {
    if (!text) {
        return false;
    }
    std::array<std::int32_t, kMaxNumbers> read{};
    char const* const end = text + std::strlen(text);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0) {
            if (*text != ',') {
                return false;
            }
            text += 1 + std::strspn(text + 1, " ");
        }
        auto const [next, error] = std::from_chars(text, end, read[i]);
        if (error != std::errc{}) {
            return false;
        }
        text = next;
    }
    if (text != end) {
        return false;
    }
    std::copy_n(read.begin(), numbers.size(), numbers.begin());
    return true;
}

} // namespace VFoundation
