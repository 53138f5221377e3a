#include "foundation/threads/VSemaphore.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Jobs.h"
#include "tests/support/PrivateSemaphores.h"
#include "tests/support/Sleeps.h"

#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <dlfcn.h>
#include <functional>
#include <future>
#include <semaphore.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace {
std::atomic<int> s_tries{0};
void Nothing(int) {
}
std::function<void(int)> s_beforeTry = &Nothing; // called with the number of the try, from 1 on
std::function<void(int)> s_afterTry = &Nothing;  // the same, after one that failed
} // namespace

/// Stands before the system's, so that the tests see every try and can act between a try and the sleep after
/// it.
extern "C" int sem_trywait(sem_t* semaphore) {
    using Try = int (*)(sem_t*);
    static auto const original = reinterpret_cast<Try>(dlsym(RTLD_NEXT, "sem_trywait"));
    int const number = ++s_tries;
    s_beforeTry(number);
    int const result = original(semaphore);
    result != 0 ? s_afterTry(number) : void();
    return result;
}

namespace {

using namespace VFoundation;
using testing_support::s_sleepsBegun;
using testing_support::t_sleeps;

class VSemaphoreTest : public testing::Test {
  protected:
    VSemaphoreTest() {
        s_tries = 0;
        t_sleeps = {};
    }
    ~VSemaphoreTest() override {
        s_beforeTry = s_afterTry = &Nothing;
        t_sleeps = {};
    }
    char const* Name() const { return m_name.c_str(); }

    std::string const m_name = testing_support::UniqueName();
    VSemaphore semaphore{1, Name()};
};

TEST_F(VSemaphoreTest, TriesAtEveryStep) {
    EXPECT_FALSE(semaphore.WaitForSemaphore(7));
    EXPECT_EQ(s_tries, 3);
    EXPECT_GE(t_sleeps.count, 3) << "after each try, the last one too";
    EXPECT_FALSE(semaphore.WaitForSemaphore(20)); // 5 + 5 + 5, then five of 1
    EXPECT_EQ(s_tries, 3 + 8);
    EXPECT_EQ(semaphore.SignalCount(), 0);
}

TEST_F(VSemaphoreTest, APostOfThisProcessWakesAWaiterInsideItsStep) {
    long const begun = s_sleepsBegun;
    auto taken = std::async(std::launch::async, [&] {
        t_sleeps.forever = true; // only the post ends it
        return semaphore.WaitForSemaphore(60'000);
    });
    testing_support::WaitUntil([&] { return s_sleepsBegun > begun; });
    semaphore.ReleaseSemaphore(1, nullptr);
    EXPECT_TRUE(taken.get());
}

TEST_F(VSemaphoreTest, APostInTheLastStepIsLeftForTheNextWait) {
    s_afterTry = [&](int number) { number == 3 && semaphore.ReleaseSemaphore(1, nullptr); };
    EXPECT_FALSE(semaphore.WaitForSemaphore(7));
    EXPECT_EQ(s_tries, 3);
    EXPECT_TRUE(semaphore.WaitForSemaphore(7));
    EXPECT_EQ(s_tries, 4);
}

TEST_F(VSemaphoreTest, APostThatAnotherTookWakesTheWaiterButDoesNotShortenTheWait) {
    sem_t* const rival = sem_open(Name(), 0);
    s_afterTry = [&](int number) { number == 1 && semaphore.ReleaseSemaphore(1, nullptr); };
    s_beforeTry = [&](int number) { number == 2 && sem_wait(rival); };
    EXPECT_FALSE(semaphore.WaitForSemaphore(7));
    EXPECT_EQ(s_tries, 4) << "the three of the steps, and one inside the first";
    EXPECT_GE(t_sleeps.count, 3) << "the first step is slept out all the same";
    sem_close(rival);
}

TEST_F(VSemaphoreTest, WaitsForeverFor0AndLess) {
    for (long const wait : {0L, -5L}) {
        auto taken = std::async(std::launch::async, [&] { return semaphore.WaitForSemaphore(wait); });
        EXPECT_EQ(taken.wait_for(std::chrono::milliseconds(10)), std::future_status::timeout);
        EXPECT_TRUE(semaphore.ReleaseSemaphore(1, nullptr));
        EXPECT_TRUE(taken.get());
    }
    EXPECT_EQ(s_tries, 0) << "blocking waits do not poll";
}

TEST_F(VSemaphoreTest, ASignalEndsAWaitWithoutLimitAndNoOther) {
    struct sigaction action = {};
    action.sa_handler = [](int) {};
    sigaction(SIGUSR1, &action, nullptr);
    std::atomic<bool> over{false};
    std::thread waiter([&] {
        EXPECT_FALSE(semaphore.WaitForSemaphore(0));
        over = true;
    });
    testing_support::WaitUntil([&] { // again and again, as the first may come before the wait
        pthread_kill(waiter.native_handle(), SIGUSR1);
        return over.load();
    });
    waiter.join();
    t_sleeps.interruptions = 5;
    EXPECT_FALSE(semaphore.WaitForSemaphore(7));
    EXPECT_EQ(s_tries, 3);
    EXPECT_GE(t_sleeps.count, 3 + 5);
    EXPECT_EQ(semaphore.SignalCount(), 0);
}

TEST_F(VSemaphoreTest, IsClosedAsOftenAsItWasOpened) {
    int const open = testing_support::s_openSemaphores;
    std::string const other = Name() + std::string("2"); // no other object has it open
    testing_support::FailEachNew([&] {
        VSemaphore second;
        bool const opened = second.Init(1, other.c_str());
        bool const failed = testing_support::NewHasFailed();
        EXPECT_NE(opened, failed);
        EXPECT_TRUE(second.Init(1, other.c_str()));
        EXPECT_EQ(testing_support::s_openSemaphores, open + 1);
        return failed;
    });
    EXPECT_EQ(testing_support::s_openSemaphores, open);
}

TEST_F(VSemaphoreTest, CountsOf0AndLessChangeOnlyTheTally) {
    long previous = 77;
    EXPECT_TRUE(semaphore.ReleaseSemaphore(0, &previous));
    EXPECT_TRUE(semaphore.ReleaseSemaphore(-2, &previous));
    EXPECT_EQ(semaphore.SignalCount(), -2);
    EXPECT_EQ(previous, 77);
    EXPECT_FALSE(semaphore.WaitForSemaphore(1));
}

TEST_F(VSemaphoreTest, SharesItsUnitsByNameAndEnforcesNoMaximum) {
    VSemaphore second;
    EXPECT_TRUE(second.Init(1, ("/" + m_name).c_str())); // the system does not mind one in front
    EXPECT_TRUE(semaphore.ReleaseSemaphore(2, nullptr));
    EXPECT_TRUE(second.WaitForSemaphore(1));
    EXPECT_TRUE(second.WaitForSemaphore(1));
    EXPECT_FALSE(second.WaitForSemaphore(1));
    EXPECT_EQ(semaphore.SignalCount(), 2);
    EXPECT_EQ(second.SignalCount(), -2);

    if (::geteuid() == 0) { // programs of other users share it too
        ASSERT_EQ(::seteuid(65534), 0);
        EXPECT_TRUE(second.Init(1, Name()));
        ASSERT_EQ(::seteuid(0), 0);
    }

    // A name that was removed and made again is another semaphore, and `Init` starts anew.
    sem_unlink(Name());
    EXPECT_TRUE(second.Init(9, Name()));
    EXPECT_EQ(second.SignalCount(), 0);
    semaphore.ReleaseSemaphore(1, nullptr);
    EXPECT_FALSE(second.WaitForSemaphore(1));
    EXPECT_TRUE(semaphore.WaitForSemaphore(1));
}

TEST_F(VSemaphoreTest, SaysWhyItCannotBeOpenedAndFailsEveryOperation) {
    testing::internal::CaptureStderr();
    EXPECT_FALSE(semaphore.Init(3, "no/such"));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Error creating semaphore\nError creating semaphore "
                                                      "named no/such with max signals 3\nreason: EINVAL\n");
    EXPECT_FALSE(semaphore.ReleaseSemaphore(1, nullptr));
    EXPECT_FALSE(semaphore.WaitForSemaphore(0)) << "there is nothing to wait for";
    long const sleeps = testing_support::t_sleeps.count;
    EXPECT_FALSE(semaphore.WaitForSemaphore(5));
    EXPECT_GT(testing_support::t_sleeps.count, sleeps) << "the wait still takes its time";
    EXPECT_FALSE(semaphore.Init(1, std::string(300, 'n').c_str()));
    EXPECT_FALSE(semaphore.Init(1, nullptr));
    EXPECT_TRUE(semaphore.Init(1, Name())) << "usable again";
}

} // namespace
