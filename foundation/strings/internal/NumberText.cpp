#include "foundation/strings/internal/NumberText.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace VFoundation {

namespace {

constexpr char kWhiteSpace[] = " \t\n\v\f\r";

} // namespace

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

// libc++ 14 reads integers only. A build that defines VFOUNDATION_NO_FLOAT_FROM_CHARS reads as it does.
#if defined(__cpp_lib_to_chars) && !defined(VFOUNDATION_NO_FLOAT_FROM_CHARS)

std::from_chars_result FloatFromChars(char const* first, char const* last, float& number) noexcept {
    return std::from_chars(first, last, number);
}

double DoubleFromText(char const* text) noexcept {
    char const* const first = text + std::strspn(text, kWhiteSpace);
    char const* const last = first + std::strlen(first);
    double number = 0;
    auto const [end, error] = std::from_chars(first, last, number);
    // What `strtod` reads beyond that: a plus sign, hexadecimal numbers, those too large or too small.
    bool const isWhole = error == std::errc() && *end != 'x' && *end != 'X';
    return isWhole ? number : ClassicStrtod(text, nullptr);
}

#else

std::from_chars_result FloatFromChars(char const* first, char const* last, float& number) noexcept {
    char const* const digits = *first == '-' ? first + 1 : first;
    if (digits == last || *digits == '+' || *digits == '-' || std::strchr(kWhiteSpace, *digits)) {
        return {first, std::errc::invalid_argument};
    }
    if (*digits == '0' && (digits[1] == 'x' || digits[1] == 'X')) { // the zero alone is a number
        number = digits == first ? 0.0F : -0.0F;
        return {digits + 1, std::errc()};
    }
    char* end = nullptr;
    errno = 0;
    float const read = ClassicStrtof(first, &end);
    if (end == first) {
        return {first, std::errc::invalid_argument};
    }
    if (errno == ERANGE && (read == 0 || std::isinf(read))) {
        return {end, std::errc::result_out_of_range};
    }
    number = read;
    return {end, std::errc()};
}

double DoubleFromText(char const* text) noexcept {
    return ClassicStrtod(text, nullptr);
}

#endif

} // namespace VFoundation
