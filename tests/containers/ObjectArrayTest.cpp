#include "foundation/containers/TRecyclePool.h"
#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using ArrayRef = VObjectRef<VObjectArray>;
using Strings = VObjectArrayTmpl<VString>;

VObjectRef<VString> Text(char const* text) {
    return VObjectRef<VString>::Adopt(VString::NewString(text));
}

TEST(ObjectArray, StandsBelowObjectInTheRegistry) {
    EXPECT_EQ(VObjectArray::TheClass()->SuperClass(), VObject::TheClass());
    EXPECT_FALSE(Strings().IsKindOfClass(VObjectContainer::TheClass()));
    EXPECT_TRUE(Strings().IsMemberOfClass(VObjectArray::TheClass()));
}

TEST(ObjectArray, DescribesItsElements) {
    VObjectArray array;
    auto const inner = ArrayRef::Adopt(VObjectArray::NewObjectArray());
    array.AddObject(nullptr);
    array.AddObject(inner.Get());
    inner->AddObject(&array); // a circle ends where it closes
    VString text;
    array.GetDescription(text);
    EXPECT_STREQ(text.CString(), "[VObjectArray] items: 2\n  [NULL]\n  [VObjectArray] items: 1\n  "
                                 "[VObjectArray] items: 2");
    inner->RemoveAllObjects();
}

TEST(ObjectArray, LooksForEqualElementsAndTheirClass) {
    Strings array(4);
    EXPECT_EQ(array.ClassOfContents(), nullptr);
    array.AddObjectTyped(Text("two").Get());
    EXPECT_TRUE(array.InsertObjectAtIndexTyped(Text("one").Get(), 0));
    EXPECT_EQ(array.ClassOfContents(), VString::TheClass());
    EXPECT_EQ(array.IndexOfEquivalentObjectTyped(Text("two").Get()), 1);
    array.InsertObjectAtIndex(nullptr, 0);
    EXPECT_EQ(array.ClassOfContents(), nullptr);
    EXPECT_EQ(array.IndexOfEquivalentObject(nullptr), -1);
    EXPECT_EQ(array.IndexOfEquivalentObject(Text("two").Get()), 2);
    array.ReplaceObjectAtIndex(VObjectRef<ACounted>::Adopt(ACounted::New()).Get(), 0);
    EXPECT_EQ(array.ClassOfContents(), nullptr);
}

TEST(ObjectArray, OnlyTheTypedAddKeepsElementsUnique) {
    Strings array;
    auto const one = Text("one");
    EXPECT_TRUE(array.AddObjectTyped(one.Get()));
    EXPECT_FALSE(array.AddObjectTyped(one.Get()));
    EXPECT_EQ(array.Count(), 1);
    EXPECT_TRUE(array.AddObject(one.Get()));
    Strings other;
    other.AddObjectsTyped(&array);
    EXPECT_EQ(other.Count(), 1);
    EXPECT_EQ(one->RetainCount(), 4);
}

TEST(ObjectArray, Sorts) {
    Strings array;
    for (char const* const text : {"m", "c", "z", "a"}) {
        array.AddObject(Text(text).Get());
    }
    array.SortWithComparisonFn([](VObject const** a, VObject const** b) {
        return std::strcmp(static_cast<VString const*>(*a)->CString(),
                           static_cast<VString const*>(*b)->CString());
    });
    EXPECT_STREQ(array.ObjectAtIndexTyped(0)->CString(), "a");
    EXPECT_STREQ(array.ObjectAtIndexTyped(2)->CString(), "m");
    array.SortWithComparisonFn([](VObject const**, VObject const**) { return 1; }); // no order at all
    EXPECT_EQ(array.Count(), 4);
}

TEST(ObjectArray, CopiesContentsFromItselfAndFromItsElements) {
    auto const object = VObjectRef<ACounted>::Adopt(ACounted::New());
    VObjectArrayTmpl<ACounted> array;
    array.AddObject(object.Get());
    array.CopyContents(array);
    EXPECT_EQ(array.ObjectAtIndex(0), object.Get());
    array.DeepCopyContents(array);
    EXPECT_NE(array.ObjectAtIndex(0), object.Get());
    auto const copy = VObjectRef<VObjectArrayTmpl<ACounted>>::Adopt(array.DeepCopy());
    EXPECT_EQ(copy->ObjectAtIndexTyped(0)->RetainCount(), 1);

    auto* const inner = VObjectArray::NewObjectArray();
    inner->AddObject(object.Get());
    array.AddObject(inner);
    inner->Release();
    array.CopyContents(*inner); // which nothing else keeps alive
    EXPECT_EQ(array.Count(), 1);
    EXPECT_EQ(array.ObjectAtIndex(0), object.Get());
}

class ArrayPool : public testing::Test {
  protected:
    ArrayPool() {
        VObjectArray::TheClass();
        VObjectArray::UninitializeClass();
        VObjectArray::UninitializeClass(); // harmless
        m_existing = VObjectArray::TheClass()->Existing();
        TRecyclePool<VObjectArray>::Create(VObjectArray::ms_recycledArrays, 2);
    }
    ~ArrayPool() override {
        VObjectArray::ReleaseRecycledArrays();
        EXPECT_EQ(VObjectArray::TheClass()->Existing(), m_existing);
        VObjectArray::NewObjectArray()->Release(); // dies, as there is no pool
        EXPECT_EQ(VObjectArray::TheClass()->Existing(), m_existing);
        VObjectArray::SetRecyclingEnabled(true);
        VObjectArray::InitializeClass();
    }
    static long Pooled() { return TRecyclePool<VObjectArray>::Count(VObjectArray::ms_recycledArrays); }
    long m_existing = 0;
};

TEST_F(ArrayPool, HandsOutTheEmptiedArrayAgain) {
    auto const object = VObjectRef<ACounted>::Adopt(ACounted::New());
    auto* const array = VObjectArray::New();
    array->SetGrowSize(7);
    array->AddObject(object.Get());
    array->Retain();
    array->Release();
    EXPECT_EQ(array->Count(), 1); // another reference was left
    array->Release();
    EXPECT_EQ(Pooled(), 1);
    EXPECT_EQ(object->RetainCount(), 1);

    auto again = ArrayRef::Adopt(VObjectArray::NewObjectArray());
    EXPECT_EQ(again.Get(), array);
    EXPECT_EQ(again->RetainCount(), 1);
    EXPECT_EQ(again->GetGrowSize(), 32);
    EXPECT_EQ(again->AllocatedCapacity(), 7);
    EXPECT_NE(ArrayRef::Adopt(VObjectArray::NewObjectArray()).Get(), array);
    again.Exchange(nullptr);
    EXPECT_EQ(Pooled(), 2);
    EXPECT_TRUE(VObjectArray::ms_recycledArrays->RemoveAllObjects()); // they do not come back
    EXPECT_EQ(Pooled(), 0);
}

class AArray : public VObjectArray {}; // not registered

/// Retains the array that is being emptied for the pool.
class AKeeper : public ACounted {
  public:
    explicit AKeeper(VObjectArray* array) : m_array(array) {}
    ~AKeeper() override { m_array->Retain(); }

  private:
    VObjectArray* m_array;
};

TEST_F(ArrayPool, TakesPlainAndTypedArraysThatNobodyHolds) {
    (new Strings(3))->Release();
    EXPECT_EQ(Pooled(), 1);
    (new AArray)->Release();
    (new VObjectArray(ACounted::TheClass(), 0))->Release();
    { VObjectArray const onTheStack; }
    EXPECT_EQ(Pooled(), 1);

    auto* const array = new VObjectArray;
    array->AddObject(VObjectRef<AKeeper>::Adopt(new AKeeper(array)).Get());
    array->Release();
    EXPECT_EQ(Pooled(), 1);
    EXPECT_EQ(array->RetainCount(), 1);
    array->Release();
    EXPECT_EQ(Pooled(), 2);
    (new VObjectArray)->Release(); // full: it dies
    VObjectArray::SetRecyclingEnabled(false);
    VObjectArray::NewObjectArray()->Release();
    EXPECT_EQ(Pooled(), 2);
}

} // namespace
