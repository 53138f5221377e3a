#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace VFoundation {

/// A half-open interval of numbers: `m_start` and the `m_length` numbers, or as far, from there. The length is
/// never negative, and the end is always a number of the type: what would lie beyond is cut off. NaN counts
/// as 0.
///
/// Ownership: a plain value.
/// Threads: as for any value.
template <class Number>
struct TInterval {
    Number m_start{};
    Number m_length{};

    bool operator==(TInterval const&) const = default;

    /// The first number behind the interval.
    Number End() const noexcept { return static_cast<Number>(m_start + m_length); }
    bool IsEmpty() const noexcept { return !(m_start < End()); }
    /// Nothing is in an empty interval.
    bool Contains(Number number) const noexcept { return number >= m_start && number < End(); }

    /// Restores the order after the members were set.
    void Normalise() noexcept {
        m_start = Clamped(m_start, kLowest);
        m_length = Clamped(m_length, Number{});
        m_length = std::min(m_length, RoomBehind(m_start));
    }

    /// What lies in both; empty and at 0 when nothing does.
    TInterval Intersection(TInterval const& other) const noexcept {
        return Between(std::max(m_start, other.m_start), std::min(End(), other.End()));
    }
    /// The smallest interval that holds both, as far as its length is a number of the type. An empty one adds
    /// nothing.
    TInterval Union(TInterval const& other) const noexcept {
        if (IsEmpty() || other.IsEmpty()) {
            return IsEmpty() ? other : *this;
        }
        return Between(std::min(m_start, other.m_start), std::max(End(), other.End()));
    }

  private:
    static constexpr Number kLowest = std::numeric_limits<Number>::lowest();
    static constexpr Number kMax = std::numeric_limits<Number>::max();

    static Number Clamped(Number number, Number lowest) noexcept {
        if constexpr (std::is_floating_point_v<Number>) {
            if (std::isnan(number)) {
                return Number{};
            }
        }
        return std::clamp(number, lowest, kMax);
    }
    /// The longest length from `from` on.
    static Number RoomBehind(Number from) noexcept {
        return from > Number{} ? static_cast<Number>(kMax - from) : kMax;
    }
    static TInterval Between(Number from, Number to) noexcept {
        if (!(from < to)) {
            return {};
        }
        bool const fits = from >= Number{} || to <= static_cast<Number>(from + kMax);
        return {from, fits ? static_cast<Number>(to - from) : kMax};
    }
};

} // namespace VFoundation
