#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace testing_support {

/// The allocator of a test program whose linker routes the C allocator here (`--wrap`), and that replaces
/// `operator new`. It can fail, and knows what is alive.
///
/// Threads: any; the count of allocations is the whole program's.
struct FailingAllocator {
    /// From now on the Nth allocation fails, and with `onward` every later one. 0: none.
    static void FailAt(long n, bool onward);
    static bool HasFailed();
    /// Blocks allocated through here and not yet freed.
    static long LiveBlocks();
    /// Starts a list of the sizes of allocations; `RecordedSizes` ends it.
    static void RecordSizes();
    static std::vector<std::size_t> RecordedSizes();
    /// The numbers and sizes of the blocks allocated since a failure was last ordered, and still alive.
    static std::string LiveSizes();
};

} // namespace testing_support
