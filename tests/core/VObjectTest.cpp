#include "foundation/core/LeakReport.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <thread>
#include <unordered_set>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

class Plain : public VObject {
  public:
    Plain() = default;
    Plain(Plain const&) = default;
};

TEST(VObject, OnlyTheLow30BitsOfTheCountDecide) {
    for (std::int32_t const flags : {0x40000000, INT32_MIN, INT32_MIN | 0x40000000}) {
        auto* const object = ACounted::New();
        object->CountWord() = flags | 1;
        EXPECT_EQ(object->RetainCount(), 1);
        object->Release();
        EXPECT_EQ(ACounted::ms_alive, 0);
    }
}

TEST(VObject, CopiesAndAssignmentsKeepClassAndCountApart) {
    ACounted const original;
    auto const copy = VObjectRef<VObject>::Adopt(original.Copy());
    EXPECT_TRUE(copy->IsMemberOfClass(ACounted::TheClass()));
    VObjectRef<VObject> const second(copy);
    *copy = original;
    EXPECT_EQ(copy->RetainCount(), 2);

    Plain const plain;
    EXPECT_EQ(plain.Copy(), nullptr); // the root class has no factory
    long const created = VObject::TheClass()->Created();
    EXPECT_EQ(Plain(plain).RetainCount(), 1);
    EXPECT_EQ(VObject::TheClass()->Created(), created + 1);
}

TEST(VObject, TellsItsKindDescriptionAndIdentity) {
    ACounted const a;
    EXPECT_TRUE(a.IsKindOfClass(VObject::TheClass()));
    EXPECT_FALSE(a.IsMemberOfClass(VObject::TheClass()));
    EXPECT_FALSE(a.IsKindOfClass(VString::TheClass()));
    EXPECT_FALSE(a.IsKindOfClass(nullptr));
    EXPECT_STREQ(a.Description().CString(), "[ACounted]");
    EXPECT_EQ(a.Hash(), reinterpret_cast<unsigned long>(&a));
    EXPECT_TRUE(a.IsEqual(a));
    EXPECT_FALSE(a.IsEqual(ACounted()));
}

TEST(VObjectRef, RetainsTheNewBeforeItReleasesTheOld) {
    std::string log;
    auto* const first = ACounted::New();
    first->LogTo(&log);
    {
        VObjectRef<ACounted> ref(first);
        ref.Exchange(first); // the same: nothing happens
        EXPECT_EQ(log, "+");
        auto* const second = ACounted::New();
        second->LogTo(&log);
        ref.Exchange(second);
        second->Release();
        EXPECT_EQ(log, "++--");
    }
    EXPECT_EQ(log, "++---x");
    first->Release();
    EXPECT_EQ(log, "++---x-x");
}

TEST(VObjectRef, AdoptsAllocatesMovesAndDetaches) {
    VObjectRef<ACounted> ref;
    EXPECT_EQ(ref.Allocate()->RetainCount(), 1);
    VObjectRef<ACounted> copy = ref;
    VObjectRef<ACounted> moved = std::move(copy);
    EXPECT_EQ(ref->RetainCount(), 2);
    EXPECT_FALSE(copy); // NOLINT(bugprone-use-after-move): a moved-from holder is null
    moved.Detach()->Release();
    EXPECT_FALSE(moved);
    EXPECT_EQ(ref->RetainCount(), 1);
    ref.Allocate();
    EXPECT_EQ(ACounted::ms_alive, 1);
    ref = VObjectRef<ACounted>();
    EXPECT_EQ(ACounted::ms_alive, 0);
}

TEST(VObjectRef, ComparesHashesAndConvertsToABase) {
    auto const object = MakeObject<ACounted>();
    VObjectRef<VObject> base = object;
    EXPECT_EQ(base, object);
    EXPECT_EQ(base, object.Get());
    EXPECT_EQ(object->RetainCount(), 2);
    base = MakeObject<ACounted>(); // takes the other's reference over
    EXPECT_EQ(base->RetainCount(), 1);
    EXPECT_NE(base, object);
    EXPECT_TRUE(base < object || object < base);
    EXPECT_EQ(VObjectRef<VObject>(), nullptr);
    std::unordered_set<VObjectRef<VObject>> const set = {base, object,
                                                         VObjectRef<VObject>::Retaining(object.Get())};
    EXPECT_EQ(set.size(), 2U);
    static_assert(!std::is_convertible_v<VObjectRef<VObject>, VObjectRef<ACounted>>);
    static_assert(noexcept(VObjectRef<ACounted>::Adopt(nullptr)));
}

struct Recycling : ACounted {
    static Recycling* New() {
        auto* const object = new Recycling;
        object->m_isFromFactory = true;
        return object;
    }
    bool m_isFromFactory = false;
};

TEST(MakeObject, UsesTheFactoryOrTheConstructor) {
    struct Inheriting : ACounted { // its inherited New() makes another class
        explicit Inheriting(int value = 1) : m_value(value) {}
        int m_value;
    };
    EXPECT_EQ(MakeObject<Inheriting>()->m_value, 1);
    EXPECT_EQ(MakeObject<Inheriting>(7)->m_value, 7);
    EXPECT_EQ(MakeObject<VString>("text")->RetainCount(), 1);
    EXPECT_TRUE(MakeObject<Recycling>()->m_isFromFactory);
}

#ifndef NDEBUG
TEST(VObject, ReportsDestructionWhileItIsHeld) {
    testing::internal::CaptureStderr();
    {
        ACounted const local;
        local.Retain();
    }
    ACounted::New()->Release();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "[ACounted] destroyed while 1 others hold it\n");
}

TEST(LeakReport, ListsWhatWasMadeSinceItsStartAndLives) {
    auto const before = MakeObject<ACounted>();
    ASSERT_TRUE(LeakReport::Start(LeakReport::eCallStacks));
    auto const kept = MakeObject<ACounted>();
    std::thread([] { ACounted const locals[2]; }).join();
    ACounted::New()->Release();
    auto const entries = LeakReport::Entries();
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].className, "ACounted");
    EXPECT_EQ(entries[0].alive, 1);
    EXPECT_EQ(entries[0].peak, 3);
    ASSERT_EQ(entries[0].callStacks.size(), 1U);
    EXPECT_GT(std::count(entries[0].callStacks[0].begin(), entries[0].callStacks[0].end(), '\n'), 3);
    EXPECT_EQ(LeakReport::Text().rfind("ACounted: 1 alive, 3 at most\n  made by\n    ", 0), 0U);
    LeakReport::Stop();
    EXPECT_EQ(LeakReport::Text(), "");
}
#else
TEST(LeakReport, TakesNoNotesInOptimisedBuilds) {
    EXPECT_FALSE(LeakReport::Start(LeakReport::eCallStacks));
}
#endif

TEST(VAtomicOp, ReturnsTheNewValueAndTakesTheExpectedValueLast) {
    long value = 41;
    EXPECT_EQ(VAtomicOp::AtomicIncrement32(&value), 42);
    EXPECT_EQ(VAtomicOp::AtomicDecrement32(&value), 41);
    std::int32_t narrow = INT32_MAX;
    EXPECT_EQ(VAtomicOp::AtomicIncrement32(&narrow), INT32_MIN);
    int a = 0;
    int b = 0;
    void volatile* target = &a;
    EXPECT_FALSE(VAtomicOp::AtomicCompareAndSwapPtr(&target, &a, &b));
    EXPECT_EQ(target, &a);
    EXPECT_TRUE(VAtomicOp::AtomicCompareAndSwapPtr(&target, &b, &a));
    EXPECT_EQ(target, &b);
}

} // namespace
