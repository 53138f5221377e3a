#include "foundation/threads/VThread.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "tests/support/Counted.h"
#include "tests/support/FailingNew.h"
#include "tests/support/LineLog.h"
#include "tests/support/Sleeps.h"

#include <gtest/gtest.h>

#include <pthread.h>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using ThreadRef = VObjectRef<VThread>;

void* Join(VThread const& thread) {
    void* result = nullptr;
    EXPECT_EQ(pthread_join(thread.ID(), &result), 0);
    return result;
}

TEST(VThread, RunsItsBodyOnTheArgument) {
    VThread::ThreadID seen{};
    auto const body = [](void* argument) {
        *static_cast<VThread::ThreadID*>(argument) = VThread::GetCurrentThreadID();
        return argument;
    };
    auto const thread = ThreadRef::Adopt(VThread::StartThread(body, &seen, "name"));
    ASSERT_TRUE(thread);
    EXPECT_EQ(Join(*thread), &seen);
    EXPECT_EQ(seen, thread->ID());
    EXPECT_NE(seen, VThread::GetCurrentThreadID());
}

void* EndsHalfWay(void* section) {
    VCriticalSectionScope const scope(static_cast<VCriticalSection*>(section));
    for (bool const isEnd : {false, true}) {
        try {
            isEnd ? VThread::EndThread() : throw 7;
        } catch (...) {
            EXPECT_EQ(VThread::CaughtEndOfThread(), isEnd);
            if (isEnd) {
                throw;
            }
        }
    }
    return section;
}

TEST(VThread, EndUnwindsItsStackAndLeavesWhatItHeld) {
    VCriticalSection section;
    auto const thread = ThreadRef::Adopt(VThread::StartThread(&EndsHalfWay, &section, nullptr));
    EXPECT_EQ(Join(*thread), nullptr);
    EXPECT_TRUE(VCriticalSectionScope().TryEnter(&section, 0)) << "left by the unwinding";
}

TEST(VThread, KeepsAPriorityAndAnObject) {
    ACounted object;
    {
        VThread thread;
        EXPECT_EQ(thread.Priority(), VThread::eNormal);
        auto const priority = static_cast<VThread::ePriority>(-77); // any number will do
        EXPECT_TRUE(thread.SetPriority(priority));
        EXPECT_EQ(thread.Priority(), priority);
        thread.SetObject(&object);
        EXPECT_EQ(object.RetainCount(), 2);
    }
    EXPECT_EQ(object.RetainCount(), 1);
}

TEST(VThread, SleepsOnAfterASignal) {
    testing_support::t_sleeps = {0, 2};
    VThread::Sleep(-1000); // does not sleep
    VThread::Sleep(1);
    EXPECT_EQ(testing_support::t_sleeps.count, 3);
}

TEST(VThread, ListHoldsAThreadOnceAndSurvivesItsEnd) {
    VThread::InitializeClass();
    VThread thread;
    EXPECT_TRUE(VThread::RegisterThread(&thread));
    VThread::InitializeClass(); // keeps the list
    EXPECT_FALSE(VThread::RegisterThread(&thread));
    EXPECT_FALSE(VThread::RegisterThread(nullptr));
    EXPECT_EQ(thread.RetainCount(), 2);
    VThread::UnregisterThread(&thread);
    VThread::UnregisterThread(&thread);
    EXPECT_EQ(thread.RetainCount(), 1);
    VThread::RegisterThread(&thread);
    VThread::UninitializeClass();
    EXPECT_EQ(thread.RetainCount(), 1);
    EXPECT_FALSE(VThread::RegisterThread(&thread));
    VThread::UnregisterThread(&thread);
}

// The exception of an allocation that fails is traced, and this log uses the list.
TEST(VThread, ListGrowsWithoutItsLock) {
    testing_support::LineLogScope const log;
    VThread::InitializeClass();
    VThread threads[33];
    for (int i = 0; i < 32; ++i) {
        EXPECT_TRUE(VThread::RegisterThread(&threads[i]));
    }
    VThread other;
    log->OnLine([&](std::string const&) { VThread::UnregisterThread(&other); });
    testing_support::FailEachNew([&] {
        bool const registered = VThread::RegisterThread(&threads[32]);
        bool const failed = testing_support::NewHasFailed();
        EXPECT_NE(registered, failed);
        return failed;
    });
    EXPECT_FALSE(log->Lines().empty());
    VThread::UninitializeClass();
    for (VThread const& thread : threads) {
        EXPECT_EQ(thread.RetainCount(), 1);
    }
}

} // namespace
