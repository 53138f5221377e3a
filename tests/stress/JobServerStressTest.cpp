#include "foundation/log/VLog.h"
#include "foundation/threads/IVJobDelegate.h"
#include "tests/support/Jobs.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

namespace {

using namespace VFoundation;
using namespace testing_support;

struct Counts : IVJobDelegate {
    void JobQueued(VJobServer*, VJob*) override { ++m_queued; }
    void JobStarted(VJobServer*, VJob*) override { ++m_started; }
    void JobSucceeded(VJobServer*, VJob*) override { ++m_succeeded; }
    void JobFailed(VJobServer*, VJob*) override { ++m_failed; }

    std::atomic<int> m_queued{0}, m_started{0}, m_succeeded{0}, m_failed{0};
};

TEST(JobServerStress, RunsEveryJobOnceAndTellsOfIt) {
    constexpr int kProducers = 4;
    int const each = 2500 * StressFactor();
    int const total = kProducers * each;
    std::vector<std::atomic<int>> runs(static_cast<std::size_t>(total));
    Counts counts;
    ServerScope const server(64);
    OnThreads(kProducers, [&](int producer) {
        for (int i = producer * each; i < (producer + 1) * each; ++i) {
            auto const work = [&, i] { return ++runs[static_cast<std::size_t>(i)], i % 2 == 0; };
            auto const job = VObjectRef<AJob>::Adopt(new AJob(work, i % 7, &counts));
            while (!server->AddJob(job.Get())) {
                std::this_thread::yield();
            }
        }
    });
    WaitUntil([&] { return counts.m_succeeded + counts.m_failed == total; });
    for (auto const& count : runs) {
        ASSERT_EQ(count, 1);
    }
    EXPECT_EQ(counts.m_queued, total);
    EXPECT_EQ(counts.m_started, total);
    EXPECT_EQ(counts.m_succeeded, total / 2);
}

// Each cycle ends its thread at another moment, with jobs coming in from another thread.
TEST(JobServerStress, StartsAndEndsOverAndOver) {
    ms_bVerbose = false; // it would have much to say
    OnThreads(8, [](int) {
        std::atomic<int> runs{0};
        std::atomic<bool> over{false};
        ServerScope const server(64);
        std::thread producer([&] {
            while (!over) {
                server.Add(new AJob([&] { return ++runs, true; }));
                std::this_thread::sleep_for(std::chrono::microseconds(500));
            }
        });
        for (int cycle = 0; cycle < 25 * StressFactor(); ++cycle) {
            server->StartServer(); // or the producer was faster
            ASSERT_TRUE(server->EndServer(true));
        }
        WaitUntil([&, before = runs.load()] { return runs != before; }); // the next job starts it again
        over = true;
        producer.join();
        server->EndServer(true);
        EXPECT_EQ(server->RetainCount(), 1);
        server->KillAllJobs();
    });
}

} // namespace
