#pragma once

#include <atomic>

namespace testing_support {

/// What the library's timed sleeps of this thread do. For programs with Sleeps.cpp.
struct Sleeps {
    long count = 0;         // so far
    long interruptions = 0; // so many of the next end at once, as by a signal
    bool forever = false;   // without their deadline
};
extern thread_local Sleeps t_sleeps;
/// Sleeps that any thread has begun on a word in memory.
extern std::atomic<long> s_sleepsBegun;

} // namespace testing_support
