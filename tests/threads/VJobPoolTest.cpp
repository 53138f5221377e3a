#include "foundation/threads/VJobPool.h"
#include "foundation/threads/IVJobDelegate.h"
#include "foundation/threads/MakeJob.h"
#include "foundation/threads/VThread.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Fork.h"
#include "tests/support/Jobs.h"
#include "tests/support/LineLog.h"

#include <gtest/gtest.h>

#include <mutex>

namespace {

using namespace VFoundation;
using namespace testing_support;

class VJobPoolTest : public testing::Test, public IVJobDelegate {
  protected:
    void JobQueued(VJobServer* server, VJob*) override { Note(server ? 'x' : 'q'); }
    void JobStarted(VJobServer*, VJob*) override { Note('s'); }
    void JobSucceeded(VJobServer*, VJob*) override { Note('+'); }
    void JobFailed(VJobServer*, VJob*) override { Note('-'); }

    void Note(char what) {
        std::lock_guard const lock(m_mutex);
        m_diary += what;
    }
    /// Keeps a thread of the pool busy until the gate opens.
    void CloseGate(VJobPool& pool) {
        std::atomic<bool> started{false};
        pool.Run([this, &started] {
            started = true;
            WaitUntil([this] { return m_gateOpen.load(); });
        });
        WaitUntil([&] { return started.load(); });
    }

    LineLogScope m_log;
    std::atomic<bool> m_gateOpen{false};
    std::mutex m_mutex;
    std::string m_diary;
};

TEST_F(VJobPoolTest, RunsByPriorityAndInOrderOfArrival) {
    VJobPool pool(1);
    CloseGate(pool);
    constexpr char kPriorities[] = "3151539135";
    for (int i = 0; i < 10; ++i) {
        EXPECT_TRUE(pool.Run([this, i] { Note("abcdefghij"[i]); }, kPriorities[i]));
    }
    EXPECT_EQ(pool.UnfinishedJobs(), 11);
    m_gateOpen = true;
    pool.WaitForAll();
    EXPECT_EQ(m_diary, "gcejafibdh");
    EXPECT_EQ(pool.UnfinishedJobs(), 0);
}

TEST_F(VJobPoolTest, RunsAsManyAtOnceAsItHasThreadsAndWaitsForWhatJobsAdd) {
    VJobPool pool(3);
    std::atomic<int> together{0};
    std::atomic<int> runs{0};
    for (int round = 0; round < 2; ++round) {
        together = 0;
        for (int i = 0; i < 3; ++i) {
            pool.Run([&] {
                ++together;
                WaitUntil([&] { return together == 3; });
                pool.WaitForAll(); // returns, or it would wait for itself
                pool.Run([&] { pool.Run([&] { ++runs; }); });
            });
        }
        pool.WaitForAll();
        EXPECT_EQ(runs, 3 * (round + 1));
    }
    EXPECT_LE(1, VJobPool().ThreadCount());
}

TEST_F(VJobPoolTest, TellsOfJobsAndCountsThoseThatFail) {
    VJobPool pool(1);
    pool.SetOnFirstFailure([this] {
        Note('1');
        throw 7;
    });
    auto const good = MakeJob([] {}, 0, this);
    EXPECT_EQ(good->JobProgress(), 0);
    CloseGate(pool);
    EXPECT_TRUE(pool.AddJob(good.Get()));
    EXPECT_TRUE(good->IsQueued());
    pool.AddJob(MakeJob([] { return false; }, 0, this).Get());
    pool.AddJob(MakeJob([] { throw 7; }, 0, this).Get());
    pool.Run([] { return false; });
    EXPECT_FALSE(pool.AddJob(nullptr));
    m_gateOpen = true;
    pool.WaitForAll();
    EXPECT_EQ(m_diary, "qqqs+s1-s-");
    EXPECT_EQ(pool.FailedJobs(), 3);
    EXPECT_TRUE(m_log.Has("VJobPool - An exception occurred in a job\n"));
    EXPECT_FALSE(good->IsQueued());
    EXPECT_EQ(good->JobProgress(), 1);
    EXPECT_EQ(good->RetainCount(), 1);
    EXPECT_LE(good->QueuedTime(), good->StartTime());
    EXPECT_LE(good->StartTime(), good->EndTime());
}

TEST_F(VJobPoolTest, KillsWhatWaitsAndAbortsWhatRuns) {
    VJobPool pool(1);
    std::atomic<bool> started{false};
    pool.AddJob(MakeJob([&](std::atomic<bool> const& isAborted) {
                    started = true;
                    return WaitUntil([&] { return isAborted.load(); });
                }).Get());
    WaitUntil([&] { return started.load(); });
    auto const waiting = MakeJob([this] { Note('!'); });
    pool.AddJob(waiting.Get());
    pool.Run([this] { Note('!'); }, 5);
    pool.KillAllJobs();
    EXPECT_EQ(waiting->RetainCount(), 1);
    pool.WaitForAll();
    EXPECT_EQ(m_diary, "");
}

TEST_F(VJobPoolTest, ReplacesAThreadThatItsJobEnds) {
    VJobPool pool(1);
    for (int i = 0; i < 3; ++i) {
        pool.Run([] { VThread::EndThread(); });
        pool.Run([this] { Note('r'); });
    }
    pool.WaitForAll();
    EXPECT_EQ(m_diary, "rrr");
    EXPECT_EQ(pool.FailedJobs(), 3);
}

TEST_F(VJobPoolTest, RunsWhatWaitsThoughAThreadCouldNotBeReplaced) {
    VJobPool pool(1);
    CloseGate(pool);
    pool.Run([] {
        t_failingNew = 1; // of the thread in its place
        VThread::EndThread();
    });
    pool.Run([this] { Note('r'); });
    m_gateOpen = true;
    pool.WaitForAll();
    EXPECT_EQ(m_diary, "r");
}

TEST_F(VJobPoolTest, TakesAJobWhollyOrNotAtAll) {
    auto const job = MakeJob([] {}, 0, this);
    FailEachNew([&] {
        long const number = std::exchange(t_failingNew, 0);
        VJobPool pool(2);
        t_failingNew = number;
        bool const added = pool.AddJob(job.Get()); // a thread that cannot be started may be done without
        bool const failed = NewHasFailed();
        if (!failed) {
            EXPECT_TRUE(added);
        }
        pool.WaitForAll();
        EXPECT_FALSE(job->IsQueued());
        EXPECT_EQ(job->RetainCount(), 1);
        EXPECT_EQ(m_diary, added ? "qs+" : "");
        m_diary.clear();
        return failed;
    });
}

TEST_F(VJobPoolTest, IsEmptyInAChildProcessAndStartsThreadsAgain) {
    VJobPool pool(1);
    CloseGate(pool);
    pool.Run([this] { Note('p'); });
    InChild([&] {
        pool.WaitForAll();
        EXPECT_TRUE(pool.Run([this] { Note('c'); }));
        pool.WaitForAll();
        EXPECT_EQ(m_diary, "c");
    });
    m_gateOpen = true;
    pool.WaitForAll();
    EXPECT_EQ(m_diary, "p");
}

// MakeJob on a server.
TEST(MakeJob, RunsOnAServerAndKeepsNoRecordOfItsOwn) {
    ServerScope const server(4);
    std::atomic<int> runs{0};
    auto const job = MakeJob([&] { return ++runs > 0; });
    EXPECT_EQ(job->Class(), VJob::TheClass());
    for (int run = 1; run <= 2; ++run) {
        EXPECT_TRUE(server->AddJob(job.Get()));
        WaitUntil([&] { return runs == run && !job->IsQueued(); });
    }
}

} // namespace
