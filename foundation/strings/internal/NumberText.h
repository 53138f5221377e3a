#pragma once

#include <charconv>

namespace VFoundation {

/// A number as the library writes it into text: "." whatever the locale.
///
/// Integers in decimal; a float with 6 significant digits ("%g"), a double with 16 ("%.16g"), a long double with 18;
/// "inf" and "nan" with the sign they have.
///
/// Ownership: holds its text.
/// Threads: as for any value.
class NumberText {
  public:
    static constexpr unsigned long kSize = 64;

    explicit NumberText(long long number) noexcept;
    explicit NumberText(unsigned long long number) noexcept;
    explicit NumberText(float number) noexcept;
    explicit NumberText(double number) noexcept;
    explicit NumberText(long double number) noexcept;

    char const* CString() const noexcept { return m_text; }

  private:
    char m_text[kSize];
};

// Readers of such text, which must not be null. They skip leading white space and read as far as the text makes
// sense; text without a number is 0.

/// Saturates at the limits of 32 bits.
long Int32FromText(char const* text) noexcept;
/// False, and 0, for a number that needs more than 64 bits. Skips only blanks and tabs.
bool Int64FromText(char const* text, long long& number) noexcept;
/// Reads "inf", "nan" and hexadecimal numbers too; a number that is too large is infinite.
double DoubleFromText(char const* text) noexcept;

/// Reads a number as `std::from_chars` does, which not every standard library has for floating point. `last` is the
/// terminating null of the text.
std::from_chars_result FloatFromChars(char const* first, char const* last, float& number) noexcept;

/// `strtod` and `strtof` with "." whatever the locale.
double ClassicStrtod(char const* text, char** end) noexcept;
float ClassicStrtof(char const* text, char** end) noexcept;

} // namespace VFoundation
