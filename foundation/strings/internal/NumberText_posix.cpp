#include "foundation/strings/internal/NumberText.h"

#include <cstdlib>
#include <locale.h>

namespace VFoundation {

namespace {

/// The thread's locale is the classic one while such an object lives.
class ClassicLocale {
  public:
    ClassicLocale() noexcept : m_before(::uselocale(Classic())) {}
    ClassicLocale(ClassicLocale const&) = delete;
    ClassicLocale& operator=(ClassicLocale const&) = delete;
    ~ClassicLocale() { ::uselocale(m_before); }

  private:
    static ::locale_t Classic() noexcept {
        static ::locale_t const s_classic = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return s_classic;
    }

    ::locale_t const m_before;
};

} // namespace

double ClassicStrtod(char const* text, char** end) noexcept {
    ClassicLocale const classic;
    return std::strtod(text, end);
}

float ClassicStrtof(char const* text, char** end) noexcept {
    ClassicLocale const classic;
    return std::strtof(text, end);
}

} // namespace VFoundation
