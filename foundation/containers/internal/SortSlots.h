#pragma once

#include <algorithm>

namespace VFoundation {

/// Sorts an array of pointers in place: a stable merge sort that allocates nothing. The comparison may contradict
/// itself, throw and change the array: slots are only ever exchanged, between two calls of it, so that none is lost
/// and none doubled. Use `SortSlots`.
template <class T, class IsThere>
class SlotSorter {
  public:
    using Compare = int (*)(T const**, T const**);

    SlotSorter(T** slots, Compare compare, IsThere isThere)
        : m_slots(slots), m_compare(compare), m_isThere(isThere) {}

    void Sort(long first, long last) {
        if (last - first < 2) {
            return;
        }
        long const middle = first + (last - first) / 2;
        Sort(first, middle);
        Sort(middle, last);
        if (IsLess(middle, middle - 1)) {
            Merge(first, middle, last);
        }
    }

  private:
    /// False, too, once the slots are gone.
    bool IsLess(long a, long b) {
        if (m_isGone) {
            return false;
        }
        T const* first = m_slots[a];
        T const* second = m_slots[b];
        bool const isLess = m_compare(&first, &second) < 0;
        m_isGone = !m_isThere();
        return isLess && !m_isGone;
    }

    /// Where the slots of a sorted stretch end that come before the slot `pivot`; with `andEqual`, equal ones do.
    long EndOfSmaller(long first, long last, long pivot, bool andEqual) {
        while (first < last) {
            long const middle = first + (last - first) / 2;
            if (andEqual ? !IsLess(pivot, middle) : IsLess(middle, pivot)) {
                first = middle + 1;
            } else {
                last = middle;
            }
        }
        return first;
    }

    /// Merges two sorted neighbours: halves the longer, finds the place of its middle in the other, and exchanges what
    /// lies between, which leaves two smaller merges.
    void Merge(long first, long middle, long last) {
        if (m_isGone || first == middle || middle == last) {
            return;
        }
        if (last - first == 2) {
            if (IsLess(middle, first)) {
                std::swap(m_slots[first], m_slots[middle]);
            }
            return;
        }
        bool const halvesFirst = middle - first > last - middle;
        long const cut1 = halvesFirst ? first + (middle - first) / 2
                                      : EndOfSmaller(first, middle, middle + (last - middle) / 2, true);
        long const cut2 =
            halvesFirst ? EndOfSmaller(middle, last, cut1, false) : middle + (last - middle) / 2;
        if (m_isGone) {
            return;
        }
        std::rotate(m_slots + cut1, m_slots + middle, m_slots + cut2);
        long const newMiddle = cut1 + (cut2 - middle);
        Merge(first, cut1, newMiddle);
        Merge(newMiddle, cut2, last);
    }

    T** m_slots;
    Compare m_compare;
    IsThere m_isThere;
    bool m_isGone = false;
};

/// `compare` answers like `strcmp`; null sorts nothing. `isThere()` says after each call of it whether the `count`
/// slots are still where they were; sorting ends when they are not.
template <class T, class IsThere>
void SortSlots(T** slots, long count, int (*compare)(T const**, T const**), IsThere isThere) {
    if (compare) {
        SlotSorter<T, IsThere>(slots, compare, isThere).Sort(0, count);
    }
}

} // namespace VFoundation
