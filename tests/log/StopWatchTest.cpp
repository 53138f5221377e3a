#include "foundation/log/VStopWatch.h"
#include "foundation/threads/VThread.h"

#include <gtest/gtest.h>

namespace {

using namespace VFoundation;

TEST(StopWatch, CountsSecondsFromTheLastStartAndHasNoStop) {
    VStopWatch watch;
    EXPECT_FALSE(watch.IsRunning());
    EXPECT_GT(watch.GetElapsedTime(), 0.1) << "never started: from the clock's own start";
    watch.StartTimer();
    EXPECT_TRUE(watch.IsRunning());
    VThread::Sleep(20);
    double const first = watch.GetElapsedTime();
    EXPECT_GE(first, 0.020);
    EXPECT_LT(first, 20.0);

    VStopWatch::UninitializeClass(); // a running watch goes on
    EXPECT_GE(watch.GetElapsedTime(), first);
    VStopWatch::InitializeClass();

    VStopWatch const later(true);
    EXPECT_TRUE(later.IsRunning());
    EXPECT_LE(later.GetElapsedTime(), watch.GetElapsedTime());
}

} // namespace
