#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/containers/internal/TRecyclePool.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

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
    EXPECT_TRUE(Strings().IsMemberOfClass(VObjectArray::TheClass()));
}

TEST(ObjectArray, DescribesItsElements) {
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

TEST(ObjectArray, LooksForEqualElementsAndTheirClass) {
    Strings array(4);
    array.AddObjectTyped(Text("two").Get());
    EXPECT_TRUE(array.InsertObjectAtIndexTyped(Text("one").Get(), 0));
    EXPECT_EQ(array.ClassOfContents(), VString::TheClass());
    array.InsertObjectAtIndex(nullptr, 0);
    EXPECT_EQ(array.ClassOfContents(), nullptr);
    EXPECT_EQ(array.IndexOfEquivalentObject(nullptr), -1);
    EXPECT_EQ(array.IndexOfEquivalentObjectTyped(Text("two").Get()), 2);
}

TEST(ObjectArray, OnlyTheTypedAddKeepsElementsUnique) {
    Strings array;
    auto const one = Text("one");
    EXPECT_TRUE(array.AddObjectTyped(one.Get()));
    EXPECT_FALSE(array.AddObjectTyped(one.Get()));
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
        return static_cast<VString const&>(**a) < static_cast<VString const&>(**b) ? -1 : 1;
    });
    EXPECT_STREQ(array.ObjectAtIndexTyped(0)->CString(), "a");
    EXPECT_STREQ(array.ObjectAtIndexTyped(2)->CString(), "m");
    array.SortWithComparisonFn([](VObject const**, VObject const**) { return 1; }); // no order at all
}

TEST(ObjectArray, CopiesContentsFromItselfAndFromItsElements) {
    ACounted object;
    VObjectArray array;
    array.AddObject(&object);
    array.CopyContents(array);
    EXPECT_EQ(array.ObjectAtIndex(0), &object);
    array.DeepCopyContents(array);
    EXPECT_NE(array.ObjectAtIndex(0), &object);
    auto* const inner = VObjectArray::NewObjectArray();
    inner->AddObject(&object);
    array.AddObject(inner);
    inner->Release();
    array.CopyContents(*inner); // which nothing else keeps alive
    EXPECT_EQ(array.ObjectAtIndex(0), &object);
}

class AArray : public VObjectArray {}; // not registered

TEST(ObjectArray, ReleasedArraysComeBackEmptiedFromThePool) {
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
    EXPECT_EQ(again->RetainCount(), 1);
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
