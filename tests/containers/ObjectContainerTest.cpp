#include "foundation/containers/VObjectArray.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using Objects = std::vector<VObject*>;

class ObjectContainer : public testing::TestWithParam<VObjectContainer* (*)()> {
  protected:
    ~ObjectContainer() override {
        m_container.Exchange(nullptr);
        for (auto* const object : {a, b, c}) {
            EXPECT_EQ(object->RetainCount(), 1);
            object->Release();
        }
        EXPECT_EQ(ACounted::ms_alive, 0);
    }
    void Fill(Objects const& objects) {
        m_container->RemoveAllObjects();
        for (VObject* const object : objects) {
            ASSERT_TRUE(m_container->AddObject(object));
        }
    }
    Objects Contents() const {
        VObject* const* const slots = m_container->GetObjects();
        return {slots, slots + m_container->Count()};
    }

    VObjectRef<VObjectContainer> m_container = VObjectRef<VObjectContainer>::Adopt(GetParam()());
    ACounted* a = ACounted::New();
    ACounted* b = ACounted::New();
    ACounted* c = ACounted::New();
};

TEST_P(ObjectContainer, ReportsFixedStepsOfGrowth) {
    std::vector<long> steps{m_container->AllocatedCapacity()};
    for (long i = 0; i < 117; ++i) {
        m_container->SetGrowSize(i < 65 ? 32 : 10);
        ASSERT_TRUE(i % 2 ? m_container->AddObjectNonThreadSafe(a) : m_container->InsertObjectAtIndex(a, 0));
        if (m_container->AllocatedCapacity() != steps.back()) {
            steps.push_back(m_container->AllocatedCapacity());
        }
    }
    EXPECT_EQ(steps, (std::vector<long>{0, 32, 64, 96, 106, 116, 126}));
    EXPECT_EQ(a->RetainCount(), 118);
    EXPECT_EQ(m_container->GetObjects()[117], nullptr);
    m_container->RemoveAllObjects();
    EXPECT_EQ(m_container->AllocatedCapacity(), 126);
    m_container->Init();
    EXPECT_EQ(m_container->AllocatedCapacity(), 10);

    for (long const step : {0L, -5L, -0x100000000L, 0x100000000L}) { // steps that cannot be taken
        m_container->FreeMem();
        m_container->SetGrowSize(step);
        EXPECT_FALSE(m_container->AddObject(a));
        EXPECT_FALSE(m_container->InsertObjectAtIndex(a, 0));
        EXPECT_EQ(m_container->AllocatedCapacity(), 0);
    }
}

TEST_P(ObjectContainer, ChecksIndexesAndMovesElements) {
    Fill({a, b});
    for (long const index : {-1L, 2L, 3L, -0x80000000L, 0x100000000L}) {
        EXPECT_EQ(m_container->ObjectAtIndex(index), nullptr);
        EXPECT_FALSE(m_container->RemoveObjectAtIndex(index));
        EXPECT_FALSE(m_container->SwapObjectsAtIndicies(index, 0));
        EXPECT_FALSE(m_container->SwapObjectsAtIndexes(0, index));
        EXPECT_EQ(m_container->ReplaceObjectAtIndex(c, index), index == 2); // at the count: appends
        EXPECT_FALSE(m_container->InsertObjectAtIndex(c, index == 2 ? 4 : index));
        m_container->RemoveObject(c);
    }
    EXPECT_TRUE(m_container->InsertObjectAtIndex(c, 2));
    EXPECT_TRUE(m_container->SwapObjectsAtIndexes(0, 2));
    EXPECT_TRUE(m_container->InsertObjectAtIndex(nullptr, 1));
    EXPECT_EQ(Contents(), (Objects{c, nullptr, b, a}));
    EXPECT_TRUE(m_container->RemoveObjectAtIndexUnsafe(2));
    EXPECT_EQ(m_container->GetObjects()[3], nullptr);
    EXPECT_TRUE(m_container->ReplaceObjectAtIndex(b, 1));
    EXPECT_EQ(Contents(), (Objects{c, b, a}));
}

TEST_P(ObjectContainer, RemovesTheLastOccurrenceAndFindsTheFirst) {
    Fill({a, b, a, nullptr, b, nullptr});
    EXPECT_EQ(m_container->IndexOfObject(a), 0);
    EXPECT_TRUE(m_container->RemoveObject(a));
    EXPECT_EQ(Contents(), (Objects{a, b, nullptr, b, nullptr}));
    EXPECT_TRUE(m_container->RemoveObjectUnsafe(b));
    EXPECT_TRUE(m_container->RemoveObject(nullptr));
    EXPECT_EQ(Contents(), (Objects{a, b, nullptr}));
    EXPECT_FALSE(m_container->ContainsObject(nullptr));
    EXPECT_FALSE(m_container->RemoveObject(c));
}

TEST_P(ObjectContainer, ReplacingReleasesTheOldBeforeItRetainsTheNew) {
    Fill({a});
    std::string log;
    a->LogTo(&log);
    EXPECT_TRUE(m_container->ReplaceObjectAtIndex(a, 0));
    EXPECT_EQ(log, "-+");
    a->LogTo(nullptr);
}

TEST_P(ObjectContainer, EqualityAsksForASubset) {
    auto const other = VObjectRef<VObjectContainer>::Adopt(GetParam()());
    Fill({a, b});
    other->AddObject(a);
    other->AddObject(a);
    EXPECT_TRUE(m_container->IsEqual(*other));
    EXPECT_TRUE(*other != *m_container);
    EXPECT_FALSE(m_container->IsEqual(*a));
    other->AddObject(nullptr);
    EXPECT_TRUE(*m_container != *other);
    EXPECT_TRUE(*other == *other);
}

TEST_P(ObjectContainer, CopiesAndWorksOnItself) {
    Fill({a, nullptr, b});
    EXPECT_TRUE(m_container->AddObjects(m_container.Get()));
    m_container->SetGrowSize(0);
    {
        auto const copy = VObjectRef<VObject>::Adopt(static_cast<VObject*>(m_container.Get())->Copy());
        EXPECT_TRUE(copy->Class() == m_container->Class());
        EXPECT_EQ(a->RetainCount(), 5);
        auto const deep = VObjectRef<VObjectContainer>::Adopt(m_container->DeepCopy());
        EXPECT_EQ(deep->Count(), 6);
        EXPECT_EQ(deep->ObjectAtIndex(1), nullptr);
        EXPECT_NE(deep->ObjectAtIndex(0), a);
        EXPECT_EQ(deep->ObjectAtIndex(0)->RetainCount(), 1);
    }
    EXPECT_EQ(Contents(), (Objects{a, nullptr, b, a, nullptr, b}));
    m_container->RemoveObjects(m_container.Get());
    EXPECT_EQ(m_container->Count(), 0);
    m_container->AddObject(m_container.Get());
    EXPECT_TRUE(m_container->RemoveObject(m_container.Get()));
}

/// An element whose destructor does what the test says.
class ALast : public ACounted {
  public:
    explicit ALast(std::function<void()> act) : m_act(std::move(act)) {}
    ~ALast() override { m_act(); }

  private:
    std::function<void()> m_act;
};

TEST_P(ObjectContainer, MayBeUsedByDestructorsOfItsElements) {
    auto const addDying = [this](std::function<void()> act) {
        m_container->AddObject(VObjectRef<ALast>::Adopt(new ALast(std::move(act))).Get());
    };
    Fill({a});
    addDying([this] { m_container->RemoveObject(a); });
    EXPECT_TRUE(m_container->RemoveObjectAtIndex(1));
    EXPECT_EQ(m_container->Count(), 0);
    addDying([this] {
        for (int i = 0; i < 100; ++i) {
            m_container->AddObject(b); // moves the slots
        }
    });
    m_container->RemoveAllObjects();
    EXPECT_EQ(m_container->Count(), 0);
    addDying([this] { m_container->FreeMem(); });
    EXPECT_FALSE(m_container->ReplaceObjectAtIndex(c, 0));
}

VObjectContainer* NewLocked() {
    return new VObjectContainer(nullptr, 0, true);
}
VObjectContainer* NewArray() {
    return new VObjectArray;
}
INSTANTIATE_TEST_SUITE_P(Kinds, ObjectContainer,
                         testing::Values(&VObjectContainer::New, &NewLocked, &NewArray));

class AOverriding : public VObjectContainer {
  public:
    AOverriding() : VObjectContainer(nullptr, 5, true) {}
    bool AddObject(VObject const* object) override {
        return ++m_added && VObjectContainer::AddObject(object);
    }
    bool RemoveObjectAtIndex(long index) override {
        return ++m_removed && VObjectContainer::RemoveObjectAtIndex(index);
    }
    using VObjectContainer::AllocateArray;

    int m_added = 0;
    int m_removed = 0;
};

TEST(ObjectContainerSubclass, OverridesAndResizes) {
    AOverriding container;
    VObjectArray source;
    auto const object = VObjectRef<ACounted>::Adopt(ACounted::New());
    for (int i = 0; i < 5; ++i) {
        source.AddObject(object.Get());
    }
    container.AddObjects(&source);
    EXPECT_EQ(container.m_added, 5);
    EXPECT_EQ(container.AllocatedCapacity(), 5);
    EXPECT_TRUE(container.AllocateArray(3)); // releases what no longer fits
    for (long const slots : {0L, -1L, 0x20000000L, 0x7fffffffffffffffL}) {
        EXPECT_FALSE(container.AllocateArray(slots)) << slots;
    }
    EXPECT_EQ(container.AllocatedCapacity(), 3);
    EXPECT_EQ(object->RetainCount(), 9);
    container.RemoveObjects(&source);
    EXPECT_EQ(container.m_removed, 3);
}

TEST(ObjectContainerLock, IsHeldAsLongAsTheCallersScope) {
    VObjectContainer container(nullptr, 0, true);
    auto const isFree = [&container] {
        bool entered = false;
        std::thread([&] {
            entered = VCriticalSectionScope().TryEnter(container.CriticalSection(), 0);
        }).join();
        return entered;
    };
    {
        VCriticalSectionScope scope;
        container.GetObjects(scope);
        container.Init(); // enters again
        EXPECT_FALSE(isFree());
    }
    EXPECT_TRUE(isFree());
}

TEST(ObjectContainerLock, LetsThreadsChangeAndCompareBothWaysRound) {
    VObjectContainer full(nullptr, 0, true);
    VObjectContainer empty(nullptr, 0, true);
    auto const object = VObjectRef<ACounted>::Adopt(ACounted::New());
    auto const use = [&](bool isFirst) {
        for (int i = 0; i < 1000; ++i) {
            full.AddObject(object.Get());
            EXPECT_EQ(full.ObjectAtIndex(0), object.Get());
            EXPECT_EQ(isFirst ? full == empty : empty == full, isFirst);
            EXPECT_TRUE(i % 2 || full.RemoveObject(object.Get()));
        }
    };
    std::thread thread(use, true);
    use(false);
    thread.join();
    EXPECT_EQ(full.Count(), 1000);
    EXPECT_EQ(object->RetainCount(), 1001);
}

} // namespace
