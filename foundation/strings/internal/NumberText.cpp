#include "foundation/strings/internal/NumberText.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace VFoundation {

NumberText::NumberText(long long number) noexcept {
    *std::to_chars(m_text, m_text + kSize - 1, number).ptr = '\0';
}

NumberText::NumberText(unsigned long long number) noexcept {
    *std::to_chars(m_text, m_text + kSize - 1, number).ptr = '\0';
}

NumberText::NumberText(float number) noexcept {
    *std::to_chars(m_text, m_text + kSize - 1, number, std::chars_format::general, 6).ptr = '\0';
}

NumberText::NumberText(double number) noexcept {
    *std::to_chars(m_text, m_text + kSize - 1, number, std::chars_format::general, 16).ptr = '\0';
}

NumberText::NumberText(long double number) noexcept {
    *std::to_chars(m_text, m_text + kSize - 1, number, std::chars_format::general, 18).ptr = '\0';
}

long Int32FromText(char const* text) noexcept {
    using Limits = std::numeric_limits<std::int32_t>;
    return std::clamp(std::strtol(text, nullptr, 10), long{Limits::min()}, long{Limits::max()});
}

bool Int64FromText(char const* text, long long& number) noexcept {
    number = 0;
    text += std::strspn(text, " \t");
    char const* const digits = *text == '+' || *text == '-' ? text + 1 : text;
    if (*digits < '0' || *digits > '9') {
        return true;
    }
    char const* const end = digits + std::strspn(digits, "0123456789");
    return std::from_chars(*text == '-' ? text : digits, end, number).ec == std::errc{};
}

} // namespace VFoundation
