#include "foundation/threads/VCriticalSection.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "tests/support/Jobs.h"

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

TEST(VCriticalSection, MayBeEnteredAgainAndIsLeftAsOften) {
    VCriticalSection const section;
    EXPECT_EQ(section.EnterCriticalSection(), 0);
    EXPECT_TRUE(section.TryCriticalSection(0));
    EXPECT_TRUE(section.TryCriticalSection(-1));
    for (int entries = 3; entries > 0; --entries) {
        for (long const wait : {0L, -5L, 3L}) {
            EXPECT_FALSE(Elsewhere([&] { return section.TryCriticalSection(wait); })) << wait;
        }
        EXPECT_NE(Elsewhere([&] { return section.LeaveCriticalSection(); }), 0);
        EXPECT_EQ(section.LeaveCriticalSection(), 0);
    }
    for (long const wait : {-1L, 60'000L}) {
        section.EnterCriticalSection();
        testing_support::ExpectWaits(
            [&] { return section.TryCriticalSection(wait) && section.LeaveCriticalSection() == 0; },
            [&] { section.LeaveCriticalSection(); });
    }
}

TEST(VCriticalSectionScope, HoldsRetainsAndLeaves) {
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
        EXPECT_TRUE(scope.TryEnter(nullptr, 0));
        EXPECT_TRUE(scope.TryEnter(second.Get(), 0));
        EXPECT_FALSE(IsFree(*second));
    }
    EXPECT_TRUE(IsFree(*second));
    EXPECT_EQ(second->RetainCount(), 1);
}

TEST(VCriticalSectionScope, HoldsNothingAfterAnAttemptThatFailed) {
    VCriticalSection section;
    VCriticalSectionScope const holder(&section);
    VCriticalSection other;
    VCriticalSectionScope scope;
    EXPECT_FALSE(Elsewhere([&] { return scope.SetAndEnter(&other), scope.TryEnter(&section, 3); }));
    EXPECT_FALSE(scope.IsEntered());
    EXPECT_EQ(other.RetainCount(), 1) << "what it held before is let go";
    EXPECT_EQ(section.RetainCount(), 2) << "and what it did not enter";
}

TEST(VCriticalSectionScope, MayBeSetToTheSectionThatOnlyItKeepsAlive) {
    VCriticalSectionScope scope(SectionRef::Adopt(VCriticalSection::New()).Get());
    scope.SetAndEnter(scope.Section());
    EXPECT_TRUE(scope.TryEnter(scope.Section(), 0));
    EXPECT_FALSE(IsFree(*scope.Section()));
}

} // namespace
