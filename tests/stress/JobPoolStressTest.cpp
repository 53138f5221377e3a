#include "foundation/threads/MakeJob.h"
#include "foundation/threads/VJobPool.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {

using namespace VFoundation;

// The pool falls asleep and wakes between the rounds; jobs, functions and priorities are mixed.
TEST(JobPoolStress, RunsEveryJobOnce) {
    constexpr int kProducers = 4;
    constexpr int kEach = 20;
    for (int const threads : {1, 2, 5}) {
        VJobPool pool(threads);
        for (int round = 0; round < 500 * testing_support::StressFactor(); ++round) {
            std::atomic<int> runs[kProducers * kEach] = {};
            testing_support::OnThreads(round % 10 == 0 ? kProducers : 1, [&](int producer) {
                for (int i = producer * kEach; i < (producer + 1) * kEach; ++i) {
                    auto const count = [&runs, i] { ++runs[i]; };
                    ASSERT_TRUE(i % 2 == 0 ? pool.Run(count, i % 7)
                                           : pool.AddJob(MakeJob(count, i % 5).Get()));
                }
            });
            pool.WaitForAll();
            for (int i = 0; i < (round % 10 == 0 ? kProducers : 1) * kEach; ++i) {
                ASSERT_EQ(runs[i], 1) << "round " << round;
            }
        }
        EXPECT_EQ(pool.FailedJobs(), 0);
    }
}

} // namespace
