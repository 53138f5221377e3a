#include "foundation/strings/internal/NumberText.h"

#include <clocale>
#include <cstdlib>
#include <locale.h>

namespace VFoundation {

double DoubleFromText(char const* text) noexcept {
    static ::locale_t const classic = ::newlocale(LC_ALL_MASK, "C", nullptr);
    return ::strtod_l(text, nullptr, classic);
}

} // namespace VFoundation
