#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

class Plain : public VObject {
  public:
    Plain() = default;
    Plain(Plain const&) = default;
};

TEST(Object, IsMadeWithOneReferenceAndDiesWithTheLast) {
    auto* const object = ACounted::New();
    EXPECT_EQ(object->RetainCount(), 1);
    object->Retain();
    EXPECT_EQ(object->RetainCount(), 2);
    object->Release();
    EXPECT_EQ(ACounted::ms_alive, 1);
    object->Release();
    EXPECT_EQ(ACounted::ms_alive, 0);
}

TEST(Object, OnlyTheLow30BitsOfTheCountDecide) {
    for (std::int32_t const flags : {0x40000000, INT32_MIN, INT32_MIN | 0x40000000}) {
        auto* const object = ACounted::New();
        object->CountWord() = flags | 1;
        EXPECT_EQ(object->RetainCount(), 1);
        object->Release();
        EXPECT_EQ(ACounted::ms_alive, 0);
    }
}

TEST(Object, CountsFromManyThreads) {
    auto* const object = ACounted::New();
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([object] {
            for (int i = 0; i < 20000; ++i) {
                object->Retain();
                object->Release();
            }
        });
    }
    for (auto& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(object->RetainCount(), 1);
    object->Release();
}

TEST(Object, CopiesAndAssignmentsKeepClassAndCountApart) {
    auto const original = VObjectRef<ACounted>::Adopt(ACounted::New());
    VObject* const copy = original->Copy();
    ASSERT_NE(copy, nullptr);
    EXPECT_TRUE(copy->IsMemberOfClass(ACounted::TheClass()));
    EXPECT_NE(copy, original.Get());
    copy->Retain();
    static_cast<VObject&>(*copy) = *original;
    EXPECT_EQ(copy->RetainCount(), 2);
    copy->Release();
    copy->Release();

    Plain const plain;
    EXPECT_EQ(plain.Copy(), nullptr); // the root class has no factory
    long const created = VObject::TheClass()->Created();
    Plain const second(plain);
    EXPECT_EQ(second.RetainCount(), 1);
    EXPECT_EQ(VObject::TheClass()->Created(), created + 1);
}

TEST(Object, TellsItsKindDescriptionAndIdentity) {
    auto const a = VObjectRef<ACounted>::Adopt(ACounted::New());
    auto const b = VObjectRef<ACounted>::Adopt(ACounted::New());
    EXPECT_TRUE(a->IsKindOfClass(VObject::TheClass()));
    EXPECT_FALSE(a->IsMemberOfClass(VObject::TheClass()));
    EXPECT_FALSE(a->IsKindOfClass(VString::TheClass()));
    EXPECT_FALSE(a->IsKindOfClass(nullptr));
    EXPECT_STREQ(a->Description().CString(), "[ACounted]");
    EXPECT_EQ(a->Hash(), reinterpret_cast<unsigned long>(a.Get()));
    EXPECT_TRUE(a->IsEqual(*a));
    EXPECT_FALSE(a->IsEqual(*b));
}

TEST(ObjectRef, RetainsTheNewBeforeItReleasesTheOld) {
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

TEST(ObjectRef, AdoptsAllocatesMovesAndDetaches) {
    VObjectRef<ACounted> ref;
    EXPECT_FALSE(ref);
    EXPECT_EQ(ref.Allocate()->RetainCount(), 1);
    VObjectRef<ACounted> copy = ref;
    EXPECT_EQ(ref->RetainCount(), 2);
    VObjectRef<ACounted> moved = std::move(copy);
    EXPECT_EQ(ref->RetainCount(), 2);
    EXPECT_FALSE(copy); // NOLINT(bugprone-use-after-move): a moved-from holder is null
    ACounted* const detached = moved.Detach();
    EXPECT_EQ(detached->RetainCount(), 2);
    detached->Release();
    ref.Allocate();
    EXPECT_EQ(ACounted::ms_alive, 1);
    ref = VObjectRef<ACounted>();
    EXPECT_EQ(ACounted::ms_alive, 0);
}

TEST(AtomicOp, ReturnsTheNewValueAndTakesTheExpectedValueLast) {
    long value = 41;
    EXPECT_EQ(VAtomicOp::AtomicIncrement32(&value), 42);
    EXPECT_EQ(VAtomicOp::AtomicDecrement32(&value), 41);
    std::int32_t narrow = INT32_MAX;
    EXPECT_EQ(VAtomicOp::AtomicIncrement32(&narrow), INT32_MIN);
    int a = 0;
    int b = 0;
    void* target = &a;
    EXPECT_FALSE(VAtomicOp::AtomicCompareAndSwapPtr(&target, &a, &b));
    EXPECT_EQ(target, &a);
    EXPECT_TRUE(VAtomicOp::AtomicCompareAndSwapPtr(&target, &b, &a));
    EXPECT_EQ(target, &b);
}

} // namespace
