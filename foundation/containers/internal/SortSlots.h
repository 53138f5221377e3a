#pragma once

#include <cstddef>
#include <cstdlib>

namespace VFoundation {

/// Sorts an array of pointers with a comparison function of the element type's own signature. Uses the C
/// library's sort, which stays inside the array even if the comparison contradicts itself. Internal.
template <class T>
void SortSlots(T** slots, long count, int (*compare)(T const**, T const**)) {
    if (count < 2 || !compare) {
        return;
    }
    auto const callThrough = [](void const* a, void const* b, void* function) {
        auto const slot = [](void const* address) {
            return const_cast<T const**>(static_cast<T const* const*>(address));
        };
        return (*static_cast<int (**)(T const**, T const**)>(function))(slot(a), slot(b));
    };
    ::qsort_r(slots, static_cast<std::size_t>(count), sizeof(T*), callThrough, &compare);
}

} // namespace VFoundation
