#include "foundation/containers/VPtrArrayTmpl.h"

#include <gtest/gtest.h>

#include <new>

namespace {

using namespace VFoundation;

TEST(PtrArray, KeepsOrderAndRemovesTheFirstOccurrence) {
    int values[100] = {};
    VPtrArrayTmpl<int> array;
    for (int& value : values) {
        ASSERT_TRUE(array.AddPtr(&value));
    }
    EXPECT_TRUE(array.AddPtr(nullptr));
    EXPECT_TRUE(array.AddPtr(&values[0]));
    EXPECT_TRUE(array.RemovePtr(&values[0]));
    EXPECT_EQ(array.PtrAtIndex(0), &values[1]);
    EXPECT_EQ(array.PtrAtIndex(100), &values[0]);
    for (long const index : {-1L, 101L}) {
        EXPECT_EQ(array.PtrAtIndex(index), nullptr);
        EXPECT_FALSE(array.RemovePtrAtIndex(index));
    }
    EXPECT_TRUE(array.RemovePtrAtIndex(100));
    EXPECT_FALSE(array.IsPtrInArray(&values[0]));
    EXPECT_FALSE(array.RemovePtr(&values[0]));
    EXPECT_TRUE(array.RemovePtr(nullptr));
    array.SortWithComparisonFn([](void const** a, void const** b) {
        return static_cast<int>(static_cast<int const*>(*b) - static_cast<int const*>(*a));
    });
    EXPECT_EQ(array.PtrAtIndex(98), &values[1]);
    array.FreeMem();
    EXPECT_EQ(array.Count(), 0);
    EXPECT_TRUE(array.AddPtr(&values[5]));
}

// The leak and mismatch checks of the sanitizers see which block was freed, and how.
TEST(PtrArray, FreesSinglePointeesAsObjectsAndTheRestAsArrays) {
    VPtrArray array(true);
    void* const second = ::operator new(8);
    for (void* const block : {::operator new(8), second, static_cast<void*>(nullptr), ::operator new[](8)}) {
        array.AddPtr(block);
    }
    EXPECT_TRUE(array.RemovePtrAtIndex(0));
    EXPECT_TRUE(array.RemovePtr(second));
    array.FreeMem();
    EXPECT_EQ(array.Count(), 0);
    array.AddPtr(::operator new[](8)); // left to the destructor
}

} // namespace
