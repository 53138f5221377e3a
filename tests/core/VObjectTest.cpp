#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <string>

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
