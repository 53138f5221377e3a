#pragma once

#include <charconv>
#include <cstddef>

namespace VFoundation {

/// Seconds with four decimals after a point, whatever the locale.
class SecondsText {
  public:
    explicit SecondsText(double seconds) noexcept {
        auto const end =
            std::to_chars(m_text, m_text + sizeof m_text - 1, seconds, std::chars_format::fixed, 4);
        *end.ptr = '\0';
        m_length = static_cast<std::size_t>(end.ptr - m_text);
    }

    char const* Text() const noexcept { return m_text; }
    std::size_t Length() const noexcept { return m_length; }

  private:
    char m_text[32]; // the clock's 64 bits of nanoseconds take 16 characters
    std::size_t m_length;
};

} // namespace VFoundation
