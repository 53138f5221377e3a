#include "foundation/containers/VDictionary.h"
#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/containers/VObjectQueue.h"
#include "foundation/containers/internal/TRecyclePool.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using testing_support::ALast;
using ArrayRef = VObjectRef<VObjectArray>;
using Strings = VObjectArrayTmpl<VString>;

VObjectRef<VString> Text(char const* text) {
    return VObjectRef<VString>::Adopt(VString::NewString(text));
}

TEST(VObjectArray, StandsBelowObjectInTheRegistry) {
    EXPECT_EQ(VObjectArray::TheClass()->SuperClass(), VObject::TheClass());
    EXPECT_TRUE(Strings().IsMemberOfClass(VObjectArray::TheClass()));
}

TEST(VObjectArray, DescribesItsElements) {
    VObjectArray array;
    auto const inner = ArrayRef::Adopt(VObjectArray::NewObjectArray());
    array.AddObject(nullptr);
    array.AddObject(inner.Get());
    inner->AddObject(&array); // a circle ends where it closes
    EXPECT_STREQ(array.Description().CString(),
                 "[VObjectArray] items: 2\n  [NULL]\n  [VObjectArray] items: 1\n"
                 "  [VObjectArray] items: 2");
    inner->RemoveAllObjects();
}

TEST(VObjectArray, LooksForEqualElementsAndTheirClass) {
    Strings array(4);
    array.AddObjectTyped(Text("two").Get());
    EXPECT_TRUE(array.InsertObjectAtIndexTyped(Text("one").Get(), 0));
    EXPECT_EQ(array.ClassOfContents(), VString::TheClass());
    array.InsertObjectAtIndex(nullptr, 0);
    EXPECT_EQ(array.ClassOfContents(), nullptr);
    EXPECT_EQ(array.IndexOfEquivalentObject(nullptr), -1);
    EXPECT_EQ(array.IndexOfEquivalentObjectTyped(Text("two").Get()), 2);
}

TEST(VObjectArray, OnlyTheTypedAddKeepsElementsUnique) {
    Strings array;
    auto const one = Text("one");
    EXPECT_TRUE(array.AddObjectTyped(one.Get()));
    EXPECT_FALSE(array.AddObjectTyped(one.Get()));
    EXPECT_TRUE(array.AddObject(one.Get()));
    array.AddObject(nullptr);
    Strings other;
    other.AddObjectsTyped(&array);
    EXPECT_EQ(other.Count(), 2);
    EXPECT_EQ(one->RetainCount(), 4);
    array.AddObjectsTyped(&array); // null is never found
    EXPECT_EQ(array.Count(), 4);
}

/// The array that a comparison changes; comparisons are plain functions.
VObjectArray* s_sorted = nullptr;
long s_comparisons = 0;

int ByLength(VObject const** a, VObject const** b) {
    ++s_comparisons;
    return static_cast<int>(static_cast<VString const*>(*a)->Length()) -
           static_cast<int>(static_cast<VString const*>(*b)->Length());
}

TEST(VObjectArray, SortsStablyWithFewComparisons) {
    Strings array;
    std::minstd_rand random(1);
    for (int i = 0; i < 1000; ++i) {
        array.AddObject(Text(std::string(random() % 50, 'x').c_str()).Get());
    }
    std::vector<VObject const*> expected(array.GetObjects(), array.GetObjects() + 1000);
    std::stable_sort(expected.begin(), expected.end(),
                     [](VObject const* a, VObject const* b) { return ByLength(&a, &b) < 0; });
    s_comparisons = 0;
    array.SortWithComparisonFn(&ByLength);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), array.GetObjects()));
    EXPECT_LT(s_comparisons, 15000);
}

TEST(VObjectArray, KeepsItsElementsWhateverAComparisonDoes) {
    using Compare = int (*)(VObject const**, VObject const**);
    for (Compare const compare : {
             +[](VObject const**, VObject const**) { return static_cast<int>(++s_comparisons % 3) - 1; },
             +[](VObject const**, VObject const**) -> int { throw 1; },
             +[](VObject const**, VObject const**) {
                 s_sorted->FreeMem(); // the slots are gone
                 return 1;
             },
             +[](VObject const**a, VObject const**b) {
                 s_sorted->RemoveObject(*b);
                 return *a < *b ? -1 : 1;
             },
             +[](VObject const**a, VObject const**b) {
                 auto const last = VObjectRef<VObject>(s_sorted->ObjectAtIndex(s_sorted->Count() - 1));
                 s_sorted->Release(); // which was the last reference to the array
                 s_sorted = VObjectArray::NewObjectArray();
                 s_sorted->AddObject(last.Get());
                 return *a < *b ? -1 : 1;
             },
         }) {
        std::vector<std::unique_ptr<ACounted>> objects(100);
        s_sorted = VObjectArray::NewObjectArray();
        for (auto& object : objects) {
            s_sorted->AddObject((object = std::make_unique<ACounted>()).get());
        }
        try {
            s_sorted->SortWithComparisonFn(compare);
        } catch (int) {
        }
        for (auto const& object : objects) {
            EXPECT_EQ(object->RetainCount(), s_sorted->ContainsObject(object.get()) ? 2 : 1);
        }
        s_sorted->Release();
    }
}

TEST(VObjectArray, CopiesContentsFromItselfAndFromItsElements) {
    ACounted object;
    VObjectArray array;
    array.AddObject(&object);
    array.CopyContents(array);
    EXPECT_EQ(array.ObjectAtIndex(0), &object);
    array.DeepCopyContents(array);
    EXPECT_EQ(array.Count(), 1);
    EXPECT_NE(array.ObjectAtIndex(0), &object);
    auto* const inner = VObjectArray::NewObjectArray();
    inner->AddObject(&object);
    array.AddObject(inner);
    inner->Release();
    array.CopyContents(*inner); // which nothing else keeps alive
    EXPECT_EQ(array.ObjectAtIndex(0), &object);
}

/// Containers inside each other, as many as `levels`, each with an element before the inner one and one after it. What
/// `add` adds them to is released at the end; the result is the order in which the elements died.
template <class Outer, class Add>
std::vector<int> DeathsIn(int levels, Add add) {
    std::vector<int> deaths;
    VObjectRef<VObject> inner;
    for (int level = levels; level > 0; --level) {
        auto const outer = VObjectRef<Outer>::Adopt(Outer::New());
        auto const addElement = [&](int number) {
            auto const act = [&deaths, number] { deaths.push_back(number); };
            add(*outer, VObjectRef<VObject>::Adopt(new ALast<ACounted>(act)).Get());
        };
        addElement(level);
        add(*outer, inner.Get());
        addElement(-level);
        inner.Exchange(outer.Get());
    }
    EXPECT_GT(inner->Description().Length(), 0U);
    inner.Exchange(nullptr);
    return deaths;
}

TEST(VObjectArray, IsReleasedInOrderAndWithoutRecursionHoweverDeep) {
    auto const add = [](VObjectArray& array, VObject* object) { array.AddObject(object); };
    for (int const levels : {1000, 100000}) {
        std::vector<int> const deaths = DeathsIn<VObjectArray>(levels, add);
        ASSERT_EQ(deaths.size(), 2U * static_cast<unsigned>(levels));
        for (int i = 0; i < 1000; ++i) {
            ASSERT_EQ(*(deaths.begin() + i), i + 1);
            ASSERT_EQ(*(deaths.end() - i - 1), -i - 1);
        }
    }
    auto const enqueue = [](VObjectQueue& queue, VObject* object) { queue.Array().AddObject(object); };
    EXPECT_EQ(DeathsIn<VObjectQueue>(50000, enqueue).size(), 100000U);
    auto const set = [](VDictionary& dictionary, VObject* object) {
        dictionary.SetObjectForKey(object, VObjectRef<VObject>::Adopt(new ACounted).Get());
    };
    EXPECT_EQ(DeathsIn<VDictionary>(50000, set).size(), 100000U);
}

class AArray : public VObjectArray {}; // not registered

TEST(VObjectArray, ReleasedArraysComeBackEmptiedFromThePool) {
    VObjectArray::UninitializeClass();
    VObjectArray::UninitializeClass(); // harmless
    VObjectArray::InitializeClass();
    long const existing = VObjectArray::TheClass()->Existing();
    auto const pooled = [] { return TRecyclePool<VObjectArray>::Count(VObjectArray::ms_recycledArrays); };

    ACounted object;
    auto* const array = VObjectArray::New();
    array->SetGrowSize(7);
    array->AddObject(&object);
    array->Release();
    EXPECT_EQ(object.RetainCount(), 1);
    auto const again = ArrayRef::Adopt(VObjectArray::NewObjectArray());
    EXPECT_EQ(again.Get(), array);
    EXPECT_EQ(again->GetGrowSize(), 32);
    (new Strings(3))->Release();
    (new AArray)->Release();
    (new VObjectArray(ACounted::TheClass(), 0))->Release();
    { VObjectArray const onTheStack; }
    EXPECT_EQ(pooled(), 1) << "plain and typed arrays of the heap only";
    VObjectArray::SetRecyclingEnabled(false);
    VObjectArray::NewObjectArray()->Release();
    VObjectArray::SetRecyclingEnabled(true);
    EXPECT_EQ(pooled(), 1);
    VObjectArray::ReleaseRecycledArrays();
    VObjectArray::NewObjectArray()->Release(); // dies, as there is no pool
    EXPECT_EQ(VObjectArray::TheClass()->Existing(), existing + 1);
    VObjectArray::InitializeClass();
}

} // namespace
