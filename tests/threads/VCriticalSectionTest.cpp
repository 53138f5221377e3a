#include "foundation/core/VObjectRef.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/VLock.h"

#include <gtest/gtest.h>

#include <future>

namespace {

using namespace VFoundation;
using SectionRef = VObjectRef<VCriticalSection>;

/// What `action` gives on another thread.
template <class Action>
auto Elsewhere(Action action) {
    return std::async(std::launch::async, action).get();
}

bool IsFree(VCriticalSection const& section) {
    return Elsewhere([&] { return section.TryCriticalSection(0) && section.LeaveCriticalSection() == 0; });
}

/// `enter` waits on another thread until this one has called `leave`.
template <class Enter, class Leave>
void ExpectWaits(Enter enter, Leave leave) {
    auto entered = std::async(std::launch::async, enter);
    EXPECT_EQ(entered.wait_for(std::chrono::milliseconds(10)), std::future_status::timeout);
    leave();
    EXPECT_TRUE(entered.get());
}

TEST(CriticalSection, MayBeEnteredAgainAndIsLeftAsOften) {
    VCriticalSection const section;
    EXPECT_EQ(section.EnterCriticalSection(), 0);
    EXPECT_TRUE(section.TryCriticalSection(0) && section.TryCriticalSection(-1));
    for (int entries = 3; entries > 0; --entries) {
        for (long const wait : {0L, -5L, 3L}) {
            EXPECT_FALSE(Elsewhere([&] { return section.TryCriticalSection(wait); })) << wait;
        }
        EXPECT_EQ(section.LeaveCriticalSection(), 0);
    }
    for (long const wait : {-1L, 60'000L}) {
        section.EnterCriticalSection();
        ExpectWaits([&] { return section.TryCriticalSection(wait) && section.LeaveCriticalSection() == 0; },
                    [&] { section.LeaveCriticalSection(); });
    }
}

TEST(CriticalSectionScope, HoldsRetainsAndLeaves) {
    auto const first = SectionRef::Adopt(VCriticalSection::New());
    auto const second = SectionRef::Adopt(VCriticalSection::New());
    {
        VCriticalSectionScope scope(first.Get());
        EXPECT_FALSE(IsFree(*first));
        scope.SetAndEnter(second.Get());
        EXPECT_TRUE(IsFree(*first));
        EXPECT_FALSE(IsFree(*second));
        EXPECT_EQ(first->RetainCount(), 1);
        EXPECT_EQ(second->RetainCount(), 2);

        scope.SetAndEnter(nullptr); // counts as entered, and holds nothing
        EXPECT_TRUE(scope.IsEntered());
        EXPECT_TRUE(IsFree(*second));
        EXPECT_TRUE(scope.TryEnter(nullptr, 0) && scope.TryEnter(second.Get(), 0));
        EXPECT_FALSE(IsFree(*second));
    }
    EXPECT_TRUE(IsFree(*second));
    EXPECT_EQ(second->RetainCount(), 1);
}

TEST(CriticalSectionScope, HoldsNothingAfterAnAttemptThatFailed) {
    VCriticalSection section;
    VCriticalSectionScope const holder(&section);
    VCriticalSection other;
    VCriticalSectionScope scope;
    EXPECT_FALSE(Elsewhere([&] { return scope.SetAndEnter(&other), scope.TryEnter(&section, 3); }));
    EXPECT_FALSE(scope.IsEntered());
    EXPECT_EQ(other.RetainCount(), 1) << "what it held before is let go";
    EXPECT_EQ(section.RetainCount(), 2);
}

TEST(CriticalSectionScope, MayBeSetToTheSectionThatOnlyItKeepsAlive) {
    VCriticalSectionScope scope(SectionRef::Adopt(VCriticalSection::New()).Get());
    scope.SetAndEnter(scope.Section());
    EXPECT_TRUE(scope.TryEnter(scope.Section(), 0));
    EXPECT_EQ(scope.Section()->RetainCount(), 1);
    EXPECT_FALSE(IsFree(*scope.Section()));
}

TEST(Lock, IsBinaryAndBelongsToNoThread) {
    VLock lock;
    lock.Unlock(); // a free lock does not count up
    EXPECT_TRUE(lock.TryLock(0));
    EXPECT_TRUE(lock.IsLocked());
    for (int const wait : {0, -2, 3}) {
        EXPECT_FALSE(lock.TryLock(wait)) << wait;
        EXPECT_FALSE(lock.IsLocked()) << "the last result, not the state";
    }
    for (int const wait : {-1, 60'000}) {
        ExpectWaits([&] { return lock.TryLock(wait); }, [&] { lock.Unlock(); });
    }
}

TEST(Lock, LetsOneThreadIn) {
    VLock lock;
    int counter = 0;
    auto const count = [&] {
        for (int i = 0; i < 2000; ++i) {
            lock.TryLock(-1);
            ++counter;
            lock.Unlock();
        }
    };
    auto const other = std::async(std::launch::async, count);
    count();
    other.wait();
    EXPECT_EQ(counter, 4000);
}

} // namespace
