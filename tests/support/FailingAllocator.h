#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace testing_support {

/// Runs `work` with its 1st, 2nd, ... allocation failing, until a run needs fewer. A run may end by itself, by
/// `std::bad_alloc` or by an exception with the id of memory; any other is a failure. A test program gets this by
/// linking `FailingAllocator`.
void FailEachAllocation(std::function<void()> const& work);

/// Whether an allocation failed in the run under way.
bool AllocationHasFailed();

/// The allocator of such a program, whose linker routes the C allocator here, but not that of its shared libraries.
/// It can fail, and knows what is alive.
///
/// Threads: any; the count of allocations is the whole program's.
struct FailingAllocator {
    /// From now on the Nth allocation fails, and with `onward` every later one. 0: none.
    static void FailAt(long n, bool onward);
    /// Blocks allocated through here and not yet freed.
    static long LiveBlocks();
    /// Starts a list of the sizes of allocations; `RecordedSizes` ends it.
    static void RecordSizes();
    static std::vector<std::size_t> RecordedSizes();
};

} // namespace testing_support
