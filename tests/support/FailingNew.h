#pragma once

#include <gtest/gtest.h>

#include <functional>

namespace testing_support {

/// The `operator new` that fails next on this thread, counted from 1; 0: none. For programs with FailingNew.cpp.
extern thread_local long t_failingNew;
/// Called by the next `operator new` of this thread, once.
extern thread_local std::function<void()> const* t_onNew;

/// Runs `work` with the 1st, 2nd, ... `operator new` of this thread failing, until none is left to fail: `work`
/// calls `NewHasFailed()` before it looks at the results, and returns what that gave.
template <class Work>
void FailEachNew(Work work) {
    for (long number = 1;; ++number) {
        ASSERT_LT(number, 1000) << "never ends";
        t_failingNew = number;
        if (!work()) {
            EXPECT_GT(number, 1) << "nothing was allocated";
            return;
        }
    }
}

/// Ends the failures; true when one has happened.
inline bool NewHasFailed() {
    bool const failed = t_failingNew == 0;
    t_failingNew = 0;
    return failed;
}

} // namespace testing_support
