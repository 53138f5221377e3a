#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/log/VLog.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/VThread.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using ThreadRef = VObjectRef<VThread>;

void* Join(VThread const& thread) {
    void* result = nullptr;
    EXPECT_EQ(pthread_join(thread.ID(), &result), 0);
    return result;
}

TEST(Thread, RunsItsBodyOnTheArgument) {
    VThread::ThreadID seen{};
    VThread::InitializeClass();
    auto const thread = ThreadRef::Adopt(VThread::StartThread(
        [](void* argument) -> void* {
            *static_cast<VThread::ThreadID*>(argument) = VThread::GetCurrentThreadID();
            return argument;
        },
        &seen, "name"));
    ASSERT_TRUE(thread);
    EXPECT_TRUE(thread->HasThread());
    EXPECT_EQ(VThread::ms_threads->Count(), 0);
    EXPECT_EQ(Join(*thread), &seen);
    EXPECT_EQ(seen, thread->ID());
    EXPECT_NE(seen, VThread::GetCurrentThreadID());
    EXPECT_FALSE(VThread().HasThread());
}

struct Unwinding {
    VCriticalSection section;
    bool passedOn = false;
    bool unwound = false;
};

void* EndsHalfWay(void* argument) {
    auto& state = *static_cast<Unwinding*>(argument);
    struct Unwound {
        bool& flag;
        ~Unwound() { flag = true; }
    } const unwound{state.unwound};
    VCriticalSectionScope const scope(&state.section);
    try {
        throw std::runtime_error("an exception is no end");
    } catch (...) {
        EXPECT_FALSE(VThread::CaughtEndOfThread());
    }
    try {
        VThread::EndThread();
    } catch (...) {
        state.passedOn = VThread::CaughtEndOfThread();
        throw;
    }
}

TEST(Thread, EndUnwindsItsStackAndLeavesWhatItHeld) {
    Unwinding state;
    auto const thread = ThreadRef::Adopt(VThread::StartThread(&EndsHalfWay, &state, nullptr));
    ASSERT_TRUE(thread);
    EXPECT_EQ(Join(*thread), nullptr);
    EXPECT_TRUE(state.passedOn);
    EXPECT_TRUE(state.unwound);
    EXPECT_TRUE(state.section.TryCriticalSection(0));
    EXPECT_EQ(state.section.LeaveCriticalSection(), 0);
}

TEST(Thread, TracesWhyItCouldNotStart) {
    pthread_attr_t usual;
    pthread_attr_t impossible;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    ASSERT_EQ(pthread_attr_init(&impossible), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&impossible, std::size_t{1} << 47), 0);
    ASSERT_EQ(pthread_setattr_default_np(&impossible), 0);
    VLog::SetSafeStartup();
    long const before = VThread::TheClass()->Existing();

    testing::internal::CaptureStderr();
    VThread* const thread = VThread::StartThread([](void* argument) { return argument; }, nullptr, "never");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Error starting thread: " + std::to_string(EAGAIN) + "\n");
    EXPECT_EQ(thread, nullptr);
    EXPECT_EQ(VThread::TheClass()->Existing(), before);

    VLog::DestroyDefaultLog();
    pthread_setattr_default_np(&usual);
    pthread_attr_destroy(&impossible);
    pthread_attr_destroy(&usual);
}

TEST(Thread, KeepsAPriorityAndAnObject) {
    {
        VThread thread;
        EXPECT_EQ(thread.Priority(), VThread::eNormal);
        for (auto const priority : {VThread::eHigh, VThread::eHigh, VThread::eLow}) {
            EXPECT_TRUE(thread.SetPriority(priority));
            EXPECT_EQ(thread.Priority(), priority);
        }
        auto const object = VObjectRef<ACounted>::Adopt(ACounted::New());
        thread.SetObject(object.Get());
        EXPECT_EQ(object->RetainCount(), 2);
    }
    EXPECT_EQ(ACounted::ms_alive, 0);
    VThread::Sleep(0);
    VThread::Sleep(-1000);
}

TEST(Thread, ListHoldsAThreadOnceAndSurvivesItsEnd) {
    VThread::InitializeClass();
    auto const thread = ThreadRef::Adopt(VThread::New());
    auto* const list = VThread::ms_threads;
    VThread::InitializeClass();
    EXPECT_EQ(VThread::ms_threads, list);
    EXPECT_TRUE(VThread::RegisterThread(thread.Get()));
    EXPECT_FALSE(VThread::RegisterThread(thread.Get()));
    EXPECT_FALSE(VThread::RegisterThread(nullptr));
    EXPECT_EQ(thread->RetainCount(), 2);
    VThread::UnregisterThread(thread.Get());
    VThread::UnregisterThread(thread.Get());
    VThread::UnregisterThread(nullptr);
    EXPECT_EQ(thread->RetainCount(), 1);

    VThread::RegisterThread(thread.Get());
    VThread::UninitializeClass();
    VThread::UninitializeClass();
    EXPECT_EQ(thread->RetainCount(), 1);
    EXPECT_EQ(VThread::ms_threads, nullptr);
    EXPECT_FALSE(VThread::RegisterThread(thread.Get()));
    VThread::UnregisterThread(thread.Get());
}

} // namespace
