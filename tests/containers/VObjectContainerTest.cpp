#include "foundation/containers/VObjectArray.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <functional>
#include <future>
#include <set>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using Objects = std::vector<VObject*>;

enum Kind { kPlain, kLocked, kArray };

class VObjectContainerTest : public testing::TestWithParam<Kind> {
  protected:
    ~VObjectContainerTest() override {
        m_box.Exchange(nullptr);
        EXPECT_EQ(a.RetainCount() + b.RetainCount() + c.RetainCount(), 3);
    }
    static VObjectContainer* NewOne() {
        return GetParam() == kArray ? new VObjectArray
                                    : new VObjectContainer(nullptr, 0, GetParam() == kLocked);
    }
    void Fill(Objects const& objects) {
        for (VObject* const object : objects) {
            ASSERT_TRUE(m_box->AddObject(object));
        }
    }
    Objects Contents() const {
        VObject* const* const slots = m_box->GetObjects();
        return {slots, slots + m_box->Count()};
    }

    ACounted a;
    ACounted b;
    ACounted c;
    VObjectRef<VObjectContainer> m_box = VObjectRef<VObjectContainer>::Adopt(NewOne());
};

INSTANTIATE_TEST_SUITE_P(Kinds, VObjectContainerTest, testing::Values(kPlain, kLocked, kArray));

TEST_P(VObjectContainerTest, ReportsFixedStepsOfGrowth) {
    std::set<long> steps;
    for (long i = 0; i < 117; ++i) {
        steps.insert(m_box->AllocatedCapacity());
        m_box->SetGrowSize(i < 65 ? 32 : 10);
        ASSERT_TRUE(i % 2 ? m_box->AddObjectNonThreadSafe(&a) : m_box->InsertObjectAtIndex(&a, 0));
    }
    EXPECT_EQ(steps, (std::set<long>{0, 32, 64, 96, 106, 116}));
    m_box->RemoveAllObjects();
    EXPECT_EQ(m_box->AllocatedCapacity(), 126);
    for (long const step : {0L, -5L, -0x100000000L, 0x100000000L}) { // steps that cannot be taken
        m_box->FreeMem();
        m_box->SetGrowSize(step);
        EXPECT_FALSE(m_box->AddObject(&a) || m_box->InsertObjectAtIndex(&a, 0));
    }
}

TEST_P(VObjectContainerTest, ChecksIndexesAndMovesElements) {
    Fill({&a, &b});
    for (long const index : {-1L, 2L, 3L, -0x80000000L, 0x100000000L}) {
        EXPECT_EQ(m_box->ObjectAtIndex(index), nullptr);
        EXPECT_FALSE(m_box->RemoveObjectAtIndex(index));
        EXPECT_FALSE(m_box->SwapObjectsAtIndexes(index, 0) || m_box->SwapObjectsAtIndicies(0, index));
        EXPECT_EQ(m_box->ReplaceObjectAtIndex(&c, index), index == 2); // at the count: appends
        EXPECT_FALSE(m_box->InsertObjectAtIndex(&c, index == 2 ? 4 : index));
        m_box->RemoveObject(&c);
    }
    EXPECT_TRUE(m_box->InsertObjectAtIndex(&c, 2));
    EXPECT_TRUE(m_box->SwapObjectsAtIndexes(0, 2));
    EXPECT_TRUE(m_box->InsertObjectAtIndex(nullptr, 1));
    EXPECT_EQ(Contents(), (Objects{&c, nullptr, &b, &a}));
    EXPECT_TRUE(m_box->RemoveObjectAtIndex(2));
    EXPECT_TRUE(m_box->ReplaceObjectAtIndex(&b, 1));
    EXPECT_EQ(Contents(), (Objects{&c, &b, &a}));
}

TEST_P(VObjectContainerTest, RemovesTheLastOccurrenceAndFindsTheFirst) {
    Fill({&a, &b, &a, nullptr, &b, nullptr});
    EXPECT_EQ(m_box->IndexOfObject(&a), 0);
    EXPECT_TRUE(m_box->RemoveObject(&a));
    EXPECT_TRUE(m_box->RemoveObjectUnsafe(&b));
    EXPECT_TRUE(m_box->RemoveObject(nullptr));
    EXPECT_EQ(Contents(), (Objects{&a, &b, nullptr}));
    EXPECT_FALSE(m_box->ContainsObject(nullptr) || m_box->RemoveObject(&c));
}

TEST_P(VObjectContainerTest, ReplacingReleasesTheOldBeforeItRetainsTheNew) {
    Fill({&a});
    std::string log;
    a.LogTo(&log);
    EXPECT_TRUE(m_box->ReplaceObjectAtIndex(&a, 0));
    EXPECT_EQ(log, "-+");
    a.LogTo(nullptr);
}

TEST_P(VObjectContainerTest, EqualityAsksForASubset) {
    auto const other = VObjectRef<VObjectContainer>::Adopt(NewOne());
    Fill({&a, &b});
    other->AddObject(&a);
    other->AddObject(&a);
    EXPECT_TRUE(m_box->IsEqual(*other) && *other != *m_box);
    other->AddObject(nullptr);
    EXPECT_TRUE(*m_box != *other && *other == *other);
}

TEST_P(VObjectContainerTest, CopiesAndWorksOnItself) {
    Fill({&a, nullptr});
    EXPECT_TRUE(m_box->AddObjects(m_box.Get()));
    EXPECT_EQ(Contents(), (Objects{&a, nullptr, &a, nullptr}));
    {
        auto const copy = VObjectRef<VObject>::Adopt(static_cast<VObject*>(m_box.Get())->Copy());
        EXPECT_TRUE(copy->Class() == m_box->Class());
        EXPECT_EQ(a.RetainCount(), 5);
        auto const deep = VObjectRef<VObjectContainer>::Adopt(m_box->DeepCopy());
        EXPECT_EQ(deep->Count(), 4);
        EXPECT_NE(deep->ObjectAtIndex(0), &a);
        EXPECT_EQ(deep->ObjectAtIndex(0)->RetainCount(), 1);
    }
    m_box->RemoveObjects(m_box.Get());
    EXPECT_EQ(m_box->Count(), 0);
    m_box->AddObject(m_box.Get());
    EXPECT_TRUE(m_box->RemoveObject(m_box.Get()));
}

/// An element whose destructor does what the test says.
struct ALast : ACounted {
    explicit ALast(std::function<void()> act) : m_act(std::move(act)) {}
    ~ALast() override { m_act(); }
    std::function<void()> m_act;
};
void AddDying(VObjectContainer& container, std::function<void()> act) {
    container.AddObject(VObjectRef<ALast>::Adopt(new ALast(std::move(act))).Get());
}

TEST_P(VObjectContainerTest, MayBeUsedByDestructorsOfItsElements) {
    Fill({&a});
    AddDying(*m_box, [this] { m_box->RemoveObject(&a); });
    EXPECT_TRUE(m_box->RemoveObjectAtIndex(1));
    EXPECT_EQ(m_box->Count(), 0);
    AddDying(*m_box, [this] { Fill(Objects(100, &b)); }); // moves the slots
    m_box->RemoveAllObjects();
    EXPECT_EQ(m_box->Count(), 0);
    AddDying(*m_box, [this] { m_box->FreeMem(); });
    EXPECT_FALSE(m_box->ReplaceObjectAtIndex(&c, 0));
}

TEST(VObjectArray, DoesNotTakeAnArrayThatAnElementRetained) {
    auto* const array = VObjectArray::NewObjectArray();
    AddDying(*array, [array] { array->Retain(); });
    array->Release();
    EXPECT_NE(VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray()).Get(), array);
    EXPECT_EQ(array->RetainCount(), 1);
    array->Release();
}

TEST(VObjectContainer, LockIsHeldAsLongAsTheCallersScope) {
    VObjectContainer container(nullptr, 0, true);
    auto const tryEnter = [&] { return VCriticalSectionScope().TryEnter(container.CriticalSection(), 0); };
    {
        VCriticalSectionScope scope;
        container.GetObjects(scope);
        container.Init(); // enters again
        EXPECT_FALSE(std::async(std::launch::async, tryEnter).get());
    }
    EXPECT_TRUE(std::async(std::launch::async, tryEnter).get());
}

TEST(VObjectContainer, LockLetsThreadsChangeAndCompareBothWaysRound) {
    ACounted const object; // outlives the containers
    VObjectContainer full(nullptr, 0, true);
    VObjectContainer empty(nullptr, 0, true);
    auto const use = [&](bool isFirst) {
        for (int i = 0; i < 1000; ++i) {
            full.AddObject(&object);
            EXPECT_EQ(isFirst ? full == empty : empty == full, isFirst);
            EXPECT_TRUE(i % 2 || full.RemoveObject(&object));
        }
    };
    auto const other = std::async(std::launch::async, use, true);
    use(false);
    other.wait();
    EXPECT_EQ(full.Count(), 1000);
    EXPECT_EQ(object.RetainCount(), 1001);
}

} // namespace
