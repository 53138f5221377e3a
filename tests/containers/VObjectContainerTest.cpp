#include "foundation/containers/VObjectArray.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "tests/support/Counted.h"
#include "tests/support/Jobs.h"

#include <gtest/gtest.h>

#include <atomic>
#include <fstream>
#include <functional>
#include <future>
#include <sched.h>
#include <set>
#include <string>
#include <sys/syscall.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using testing_support::ALast;
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
        EXPECT_FALSE(m_box->AddObject(&a));
        EXPECT_FALSE(m_box->InsertObjectAtIndex(&a, 0));
    }
}

TEST_P(VObjectContainerTest, ChecksIndexesAndMovesElements) {
    Fill({&a, &b});
    for (long const index : {-1L, 2L, 3L, -0x80000000L, 0x100000000L}) {
        EXPECT_EQ(m_box->ObjectAtIndex(index), nullptr);
        EXPECT_FALSE(m_box->RemoveObjectAtIndex(index));
        EXPECT_FALSE(m_box->SwapObjectsAtIndexes(index, 0));
        EXPECT_FALSE(m_box->SwapObjectsAtIndicies(0, index));
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
    EXPECT_FALSE(m_box->ContainsObject(nullptr));
    EXPECT_FALSE(m_box->RemoveObject(&c));
}

TEST_P(VObjectContainerTest, ReplacingReleasesTheOldBeforeItRetainsTheNew) {
    Fill({&a});
    std::string log;
    a.LogTo(&log);
    EXPECT_TRUE(m_box->ReplaceObjectAtIndex(&a, 0));
    EXPECT_EQ(log, "-+");
    a.LogTo(nullptr);
}

TEST_P(VObjectContainerTest, IsWalkedWhileTheLoopChangesIt) {
    Fill({&a, nullptr, &b});
    Objects seen;
    for (VObject* const element : *m_box) {
        seen.push_back(element);
        if (!element) {
            m_box->AddObject(&c);
        }
    }
    EXPECT_EQ(seen, (Objects{&a, nullptr, &b, &c}));
    auto const isFree = [this] {
        return std::async(std::launch::async,
                          [this] {
                              VCriticalSectionScope scope;
                              return scope.TryEnter(m_box->CriticalSection(), 0);
                          })
            .get();
    };
    for (VObject* const element : m_box->Locked()) {
        EXPECT_EQ(isFree(), m_box->CriticalSection() == nullptr);
        m_box->RemoveObject(element);
    }
    EXPECT_TRUE(isFree());
    EXPECT_EQ(Contents(), (Objects{nullptr, &c}));
}

TEST(VObjectContainer, TwoMayEmptyEachOtherOnTwoThreads) {
    for (int round = 0; round < 20; ++round) {
        auto const first = MakeObject<VObjectContainer>(nullptr, 0, true);
        auto const second = MakeObject<VObjectContainer>(nullptr, 0, true);
        std::atomic<int> dying{0};
        auto const fill = [&dying](VObjectContainer& box, VObjectContainer& other) {
            auto const entersAndLeaves = [section = box.CriticalSection()] {
                return section->TryCriticalSection(0) && section->LeaveCriticalSection() == 0;
            };
            for (int i = 0; i < 3; ++i) {
                auto const element =
                    VObjectRef<VObject>::Adopt(new ALast<ACounted>([&dying, &other, entersAndLeaves] {
                        ++dying;
                        while (dying < 2) { // each thread holds one lock from here on
                        }
                        other.AddObjects(&other);
                        other.RemoveAllObjects();
                        other.FreeMem();
                        EXPECT_FALSE(std::async(std::launch::async, entersAndLeaves).get())
                            << "entered again";
                    }));
                box.AddObject(element.Get());
            }
        };
        fill(*first, *second);
        fill(*second, *first);
        auto const empty = [](VObjectContainer& box, int way) {
            switch (way) {
            case 0:
                box.RemoveAllObjects();
                break;
            case 1:
                box.FreeMem();
                break;
            default:
                box.RemoveObjectAtIndex(0);
                box.RemoveAllObjects();
            }
        };
        auto const other = std::async(std::launch::async, [&] { empty(*second, round % 2); });
        empty(*first, round % 3);
        other.wait();
        EXPECT_EQ(first->Count() + second->Count(), 0);
        EXPECT_EQ(ACounted::ms_alive, 0);
    }
}

TEST_P(VObjectContainerTest, StoresNothingWhoseRetainThrowsOrUsesIt) {
    struct Odd : ACounted {
        void Retain() const override {
            m_act();
            ACounted::Retain();
        }
        std::function<void()> m_act = [] {};
    };
    Odd odd;
    m_box->SetGrowSize(1);
    std::vector<std::function<bool()>> const adds = {[&] { return m_box->AddObject(&odd); },
                                                     [&] { return m_box->InsertObjectAtIndex(&odd, 2); },
                                                     [&] { return m_box->ReplaceObjectAtIndex(&odd, 0); }};
    for (auto const& add : adds) {
        m_box->RemoveAllObjects();
        Fill({&a, &b});
        odd.m_act = [] { throw 1; };
        EXPECT_THROW(add(), int);
        EXPECT_FALSE(m_box->ContainsObject(&odd));
        EXPECT_EQ(odd.RetainCount(), 1);
        odd.m_act = [&] { // the slots that were there for it are others'
            m_box->FreeMem();
            m_box->AddObject(&c);
        };
        bool const isAdded = add();
        EXPECT_EQ(m_box->ContainsObject(&odd), isAdded);
        EXPECT_EQ(odd.RetainCount(), isAdded ? 2 : 1);
        EXPECT_LE(m_box->Count(), m_box->AllocatedCapacity());
        EXPECT_TRUE(m_box->ContainsObject(&c));
    }
    odd.m_act = [] {};
    m_box->RemoveAllObjects();
    Fill({&a, &odd});
    odd.m_act = [] { throw 1; };
    EXPECT_THROW(VObjectContainer().AddObjects(m_box.Get()), int); // and lets go of what it held already
    m_box->RemoveAllObjects();
}

TEST_P(VObjectContainerTest, EqualityAsksForASubset) {
    auto const other = VObjectRef<VObjectContainer>::Adopt(NewOne());
    Fill({&a, &b});
    other->AddObject(&a);
    other->AddObject(&a);
    EXPECT_TRUE(m_box->IsEqual(*other));
    EXPECT_TRUE(*other != *m_box);
    other->AddObject(nullptr);
    EXPECT_TRUE(*m_box != *other);
    EXPECT_TRUE(*other == *other);
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
    m_box->SetGrowSize(0); // which no copy minds
    auto const copy = VObjectRef<VObjectContainer>::Adopt(m_box->Copy());
    EXPECT_EQ(copy->Count(), 4);
    EXPECT_EQ(copy->GetGrowSize(), GetParam() == kArray ? VObjectContainer::kDefaultGrowSize : 0);
    copy->FreeMem();
    m_box->SetGrowSize(1);
    m_box->RemoveObjects(m_box.Get());
    EXPECT_EQ(m_box->Count(), 0);
    m_box->AddObject(m_box.Get());
    EXPECT_TRUE(m_box->RemoveObject(m_box.Get()));
}

void AddDying(VObjectContainer& container, std::function<void()> act, bool throws = false) {
    container.AddObject(VObjectRef<VObject>::Adopt(new ALast<ACounted>(std::move(act), throws)).Get());
}

TEST_P(VObjectContainerTest, MayBeUsedByDestructorsOfItsElements) {
    Fill({&a});
    AddDying(*m_box, [this] { m_box->RemoveObject(&a); });
    EXPECT_TRUE(m_box->RemoveObjectAtIndex(1));
    EXPECT_EQ(m_box->Count(), 0);
    AddDying(*m_box, [this] { Fill(Objects(100, &b)); }); // moves the slots
    m_box->RemoveAllObjects();
    EXPECT_EQ(m_box->Count(), 0);
    EXPECT_GE(m_box->AllocatedCapacity(), 100);
    AddDying(*m_box, [this] { m_box->FreeMem(); });
    EXPECT_FALSE(m_box->ReplaceObjectAtIndex(&c, 0));
}

TEST_P(VObjectContainerTest, ReleasesInOrderWhatItHasTakenOut) {
    int const alive = ACounted::ms_alive;
    auto const noMore = [] {};
    std::string order;
    for (char const name : {'a', 'b', 'c'}) {
        auto const act = [this, name, &order] {
            order += name;
            EXPECT_EQ(m_box->Count(), 0);
            m_box->RemoveObjectAtIndex(0); // not one that waits for its turn
            m_box->RemoveAllObjects();
        };
        AddDying(*m_box, act, name != 'a'); // the rest is released although a death throws
    }
    EXPECT_THROW(m_box->RemoveAllObjects(), int);
    EXPECT_EQ(order, "abc");
    AddDying(*m_box, noMore, true);
    try {
        m_box.Detach()->Release();
    } catch (int) { // a recycled array's; a destructor lets nothing out
    }
    EXPECT_EQ(ACounted::ms_alive, alive);
}

TEST_P(VObjectContainerTest, MayEndInTheDestructorOfAnElement) {
    auto const isOver = [this] { m_box.Exchange(nullptr); };
    for (auto const& end : std::vector<std::function<void(VObjectContainer&)>>{
             [](VObjectContainer& box) { box.RemoveAllObjects(); },
             [](VObjectContainer& box) { box.RemoveObjectAtIndex(1); },
             [](VObjectContainer& box) { box.FreeMem(); },
             [](VObjectContainer& box) { box.Init(); },
             [this](VObjectContainer& box) { EXPECT_TRUE(box.ReplaceObjectAtIndex(&c, 1)); },
             [](VObjectContainer& box) { box.RemoveObjects(&box); },
         }) {
        m_box = VObjectRef<VObjectContainer>::Adopt(NewOne());
        Fill({&a});
        AddDying(*m_box, isOver);
        Fill({&b});
        end(*m_box);
        EXPECT_FALSE(m_box);
    }
}

TEST(VObjectArray, DoesNotTakeAnArrayThatAnElementRetained) {
    auto* const array = VObjectArray::NewObjectArray();
    AddDying(*array, [array] { array->Retain(); });
    array->Release();
    EXPECT_NE(VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray()).Get(), array);
    EXPECT_EQ(array->RetainCount(), 1);
    array->Release();
}

/// Runs `operation` on another thread while this one holds the lock, and returns whether it went to sleep before its
/// end; it has nothing else to sleep for.
bool WaitsForLock(VObjectContainer const& container, std::function<void()> const& operation) {
    VCriticalSectionScope scope;
    container.GetObjects(scope); // the scope holds the lock from here on
    std::atomic<pid_t> id{0};
    std::atomic<bool> isOver{false};
    auto const thread = std::async(std::launch::async, [&] {
        id = static_cast<pid_t>(::syscall(SYS_gettid));
        operation();
        isOver = true;
    });
    for (bool sleeps = false; !sleeps && !isOver; ::sched_yield()) {
        std::string state;
        std::getline(std::ifstream("/proc/self/task/" + std::to_string(id) + "/stat"), state);
        sleeps = state.find(") S ") != state.npos;
    }
    bool const waits = !isOver;
    scope.SetAndEnter(nullptr); // before the thread is waited for
    return waits;
}

TEST(VObjectContainer, LocksInAllOperationsButTheUnsafeOnes) {
    ACounted object;
    auto const box = VObjectRef<VObjectContainer>::Adopt(new VObjectContainer(nullptr, 0, true));
    VObjectContainer other(nullptr, 0, true);
    other.AddObject(&object);
    for (auto const& [name, operation] : std::vector<std::pair<char const*, std::function<void()>>>{
             {"AddObject", [&] { box->AddObject(&object); }},
             {"AddObjects to another", [&] { other.AddObjects(box.Get()); }},
             {"InsertObjectAtIndex", [&] { box->InsertObjectAtIndex(&object, 0); }},
             {"ReplaceObjectAtIndex", [&] { box->ReplaceObjectAtIndex(nullptr, 0); }},
             {"SwapObjectsAtIndexes", [&] { box->SwapObjectsAtIndexes(0, 1); }},
             {"ObjectAtIndex", [&] { box->ObjectAtIndex(0); }},
             {"AllocatedCapacity", [&] { box->AllocatedCapacity(); }},
             {"IndexOfObject", [&] { box->IndexOfObject(&object); }},
             {"operator==", [&] { EXPECT_TRUE(*box == other); }},
             {"operator!= of another", [&] { EXPECT_TRUE(other != *box); }},
             {"RemoveObject", [&] { box->RemoveObject(&object); }},
             {"RemoveObjects from another", [&] { other.RemoveObjects(box.Get()); }},
             {"RemoveObjectAtIndex", [&] { box->RemoveObjectAtIndex(0); }},
             {"RemoveAllObjects", [&] { box->RemoveAllObjects(); }},
             {"FreeMem", [&] { box->FreeMem(); }},
         }) {
        box->AddObjectNonThreadSafe(&object);
        box->AddObjectNonThreadSafe(&object);
        EXPECT_TRUE(WaitsForLock(*box, operation)) << name;
    }
    auto const useUnlocked = [&] {
        box->RemoveAllObjects(); // of none
        box->AddObjectNonThreadSafe(&object);
        box->AddObjectNonThreadSafe(&object);
        EXPECT_TRUE(box->RemoveObjectUnsafe(&object));
        EXPECT_TRUE(box->RemoveObjectAtIndexUnsafe(0));
        box->RemoveAllObjectsUnsafe();
    };
    VCriticalSectionScope const scope(box->CriticalSection());
    box->Init(); // enters again
    std::async(std::launch::async, useUnlocked).get();
}

// The other thread may be comparing the two the other way round.
TEST(VObjectContainer, LockIsLeftByAComparisonThatWaitsForTheOtherOne) {
    auto const box = MakeObject<VObjectContainer>(nullptr, 0, true);
    auto const other = MakeObject<VObjectContainer>(nullptr, 0, true);
    VCriticalSectionScope otherScope(other->CriticalSection());
    VCriticalSectionScope scope;
    auto const enters = [&] { return scope.TryEnter(box->CriticalSection(), 0); };
    auto const comparison = std::async(std::launch::async, [&] { return *box == *other; });
    bool isTaken = false;
    testing_support::WaitUntil([&] { return isTaken = isTaken || !enters(); });
    bool isLeft = false;
    testing_support::WaitUntil([&] { return isLeft = isLeft || enters(); });
    scope.SetAndEnter(nullptr);
    otherScope.SetAndEnter(nullptr);
    comparison.wait();
}

TEST(VObjectContainer, LockLetsThreadsEmptyAndCompareEachOthersContainers) {
    int const alive = ACounted::ms_alive;
    {
        VObjectContainer boxes[] = {VObjectContainer(nullptr, 0, true), VObjectContainer(nullptr, 0, true)};
        auto const use = [&boxes](std::size_t own) {
            VObjectContainer& box = boxes[own];
            VObjectContainer& other = boxes[1 - own];
            for (int i = 0; i < 2000; ++i) {
                for (int k = 0; k < 5; ++k) {
                    box.AddObject(VObjectRef<ACounted>::Adopt(new ACounted).Get());
                }
                VObjectContainer copy;
                copy.AddObjects(&other);
                static_cast<void>(box == other);          // locks both, each thread its own first
                EXPECT_FALSE(copy.RemoveObject(nullptr)); // a null that was never added
                box.RemoveObjects(&other);
                other.RemoveObjects(&copy);
                i % 3 ? other.RemoveAllObjects() : other.FreeMem();
            }
        };
        auto const second = std::async(std::launch::async, use, 1);
        use(0);
        second.wait();
    }
    EXPECT_EQ(ACounted::ms_alive, alive);
}

} // namespace
