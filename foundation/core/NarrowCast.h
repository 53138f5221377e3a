#pragma once

namespace VFoundation {

/// Converts between arithmetic types and says at the call that bits or precision may be dropped on purpose.
/// The one place where the library narrows: integers keep their low bits.
template <class To, class From>
constexpr To narrow_cast(From value) noexcept {
    return static_cast<To>(value);
}

} // namespace VFoundation
