#include "foundation/log/VStopWatch.h"

#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace VFoundation;

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

TEST(VStopWatch, CountsSecondsFromTheLastStartAndHasNoStop) {
    double const first = Now();
    VStopWatch watch;
    double const unstarted = watch.GetElapsedTime();
    EXPECT_LE(first, unstarted) << "never started: from the clock's own start";
    double const started = Now();
    EXPECT_LE(unstarted, started);
    watch.StartTimer();
    VStopWatch::UninitializeClass(); // a running watch goes on
    double elapsed = 0;
    while (elapsed == 0) {
        elapsed = watch.GetElapsedTime();
    }
    EXPECT_LE(elapsed, Now() - started) << "in seconds, from its own start";
}

} // namespace
