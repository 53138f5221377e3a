#include "foundation/log/VStopWatch.h"
#include "foundation/threads/VThread.h"

#include <gtest/gtest.h>

namespace {

using namespace VFoundation;

TEST(VStopWatch, CountsSecondsFromTheLastStartAndHasNoStop) {
    VStopWatch watch;
    EXPECT_GT(watch.GetElapsedTime(), 0.1) << "never started: from the clock's own start";
    watch.StartTimer();
    VThread::Sleep(20);
    VStopWatch::UninitializeClass(); // a running watch goes on
    EXPECT_GE(watch.GetElapsedTime(), 0.020);
    EXPECT_LE(VStopWatch(true).GetElapsedTime(), watch.GetElapsedTime()) << "in seconds, from its own start";
}

} // namespace
