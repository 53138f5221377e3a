#pragma once

#include <functional>

namespace testing_support {

/// Runs `work` with its 1st, 2nd, ... allocation failing, until a run needs fewer. A run may end by itself, by
/// `std::bad_alloc` or by an exception with the id of memory; any other is a failure. A test program gets this by
/// linking `FailingAllocator`.
void FailEachAllocation(std::function<void()> const& work);

/// Whether an allocation failed in the run under way.
bool AllocationHasFailed();

} // namespace testing_support
