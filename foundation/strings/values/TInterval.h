#pragma once

#include "foundation/core/Export.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace VFoundation {

/// A half-open interval of numbers, `m_length` long from `m_start` on. The length is never negative, and the end is a
/// number of the type: a longer interval is cut off there. NaN counts as 0.
///
/// Ownership: a plain value.
/// Threads: as for any value.
template <class Number>
struct VFOUNDATION_API TInterval {
    Number m_start{};
    Number m_length{};

    bool operator==(TInterval const&) const = default;

    /// The first number after the interval.
    Number End() const noexcept { return static_cast<Number>(m_start + m_length); }
    bool IsEmpty() const noexcept { return !(m_start < End()); }
    /// False for every number when the interval is empty.
    bool Contains(Number number) const noexcept { return number >= m_start && number < End(); }

    /// Brings members that were set into range.
    void Normalise() noexcept {
        m_start = Clamped(m_start, kLowest);
        m_length = Clamped(m_length, Number{});
        m_length = std::min(m_length, LongestFrom(m_start));
    }

    // Sums of floating numbers are rounded. Of two intervals with the same ends, an intersection is the shorter and a
    // union the longer. Where no length gives the exact end, an intersection ends just before it, a union just after.

    /// What lies in both; empty and at 0 when nothing does.
    TInterval Intersection(TInterval const& other) const noexcept {
        Number const from = std::max(m_start, other.m_start);
        Number const to = std::min(End(), other.End());
        if (!(from < to)) {
            return {};
        }
        return Between(other, from, to, Number{}, [](Number a, Number b) { return a < b; });
    }
    /// The smallest interval that holds both, as far as its length is a number of the type. An empty one adds
    /// nothing.
    TInterval Union(TInterval const& other) const noexcept {
        if (IsEmpty() || other.IsEmpty()) {
            return IsEmpty() ? other : *this;
        }
        Number const from = std::min(m_start, other.m_start);
        Number const to = std::max(End(), other.End());
        return Between(other, from, to, kMax, [](Number a, Number b) { return a > b; });
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
    static Number LongestFrom(Number from) noexcept {
        return from > Number{} ? static_cast<Number>(kMax - from) : kMax;
    }
    bool HasEnds(Number from, Number to) const noexcept { return m_start == from && End() == to; }
    /// The interval from `from` to `to`: this one or the other if they have these ends, and of both the one whose length
    /// `isBetter`. Else a new one, whose length moves toward `limit` while `to` would be better than its end.
    template <class IsBetter>
    TInterval Between(TInterval const& other, Number from, Number to, Number limit,
                      IsBetter isBetter) const noexcept {
        if (HasEnds(from, to) || other.HasEnds(from, to)) {
            bool const takesOther =
                !HasEnds(from, to) || (other.HasEnds(from, to) && isBetter(other.m_length, m_length));
            return takesOther ? other : *this;
        }
        bool const fits = from >= Number{} || to <= static_cast<Number>(from + kMax);
        TInterval result{from, fits ? static_cast<Number>(to - from) : kMax};
        if constexpr (std::is_floating_point_v<Number>) {
            while (isBetter(to, result.End()) && result.m_length != limit) {
                result.m_length = std::nextafter(result.m_length, limit);
            }
        }
        return result;
    }
};

} // namespace VFoundation
