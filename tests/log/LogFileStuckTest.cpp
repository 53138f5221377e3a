#include "foundation/log/VLogFile.h"
#include "foundation/log/VStopWatch.h"
#include "tests/log/StuckFile.h"
#include "tests/support/LineLog.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <thread>

namespace {

using namespace VFoundation;

// The writer waits for a reader that does not come; 25 rounds of a second each.
TEST(LogFileStuck, IsGivenUpAndStillHasWhatItNeeds) {
    testing_support::LineLogScope const traced;
    testing_support::StuckFile const file;
    auto log = VObjectRef<VLogFile>::Adopt(new VLogFile(file.Path()));
    log->StartLoggingThread();
    long added = 0;
    auto const addUntilDropped = [&] {
        long const addedBefore = added;
        for (long const dropped = log->DroppedLines(); log->DroppedLines() == dropped; ++added) {
            log->AddString("a line\n");
        }
        return added - addedBefore;
    };
    do { // until the writer has taken none in the meantime
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    } while (addUntilDropped() > 1);
    VStopWatch const watch(true);
    EXPECT_FALSE(log->ShutdownLoggingThread());
    EXPECT_GE(watch.GetElapsedTime(), 25);
    EXPECT_TRUE(traced->Has(" waiting for shutdown semaphore...(24/25)\n"));
    EXPECT_FALSE(traced->Has(" waiting for shutdown semaphore...(25/25)\n"));
    EXPECT_TRUE(
        traced->Has(" WARNING! Logging thread is still running after being told to shutdown! Bad Thread!\n"));

    EXPECT_TRUE(log->IsLoggingThreadRunning());
    EXPECT_FALSE(log->StartLoggingThread());
    EXPECT_FALSE(log->ShutdownLoggingThread());
    EXPECT_TRUE(
        traced->Has(" m_writingThread has already been set to zero, but thread is still running according to "
                    "m_bThreadIsRunning\n"));
    long const dropped = log->DroppedLines();
    log->AddString("no way past the writer\n");
    EXPECT_EQ(log->DroppedLines(), dropped + 1);
    EXPECT_TRUE(log->Close());
    EXPECT_FALSE(log->Open(file.Path())); // the writer still holds the file
    log.Exchange(nullptr);

    std::string const text = file.ReadAll(); // the writer goes on, ends, and closes the file
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), added - dropped);
}

} // namespace
