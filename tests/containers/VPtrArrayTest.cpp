#include "foundation/containers/VPtrArrayTmpl.h"

#include <gtest/gtest.h>

#include <new>

namespace {

using namespace VFoundation;

TEST(VPtrArray, KeepsOrderAndRemovesTheFirstOccurrence) {
    int values[100] = {};
    VPtrArrayTmpl<int> array;
    for (int& value : values) {
        ASSERT_TRUE(array.AddPtr(&value));
    }
    EXPECT_TRUE(array.AddPtr(&values[0]));
    EXPECT_TRUE(array.RemovePtr(&values[0]));
    EXPECT_EQ(array.PtrAtIndex(0), &values[1]);
    EXPECT_EQ(array.PtrAtIndex(99), &values[0]);
    for (long const index : {-1L, 100L}) {
        EXPECT_EQ(array.PtrAtIndex(index), nullptr);
        EXPECT_FALSE(array.RemovePtrAtIndex(index));
    }
    long sum = 0;
    for (int const* const value : array) {
        sum += value - values;
    }
    EXPECT_EQ(sum, 99 * 100 / 2);
    EXPECT_TRUE(array.RemovePtrAtIndex(99));
    EXPECT_FALSE(array.RemovePtr(&values[0]));
}

// The leak and mismatch checks of the sanitizers see which block was freed, and how.
TEST(VPtrArray, FreesSinglePointeesAsObjectsAndTheRestAsArrays) {
    VPtrArray array(true);
    void* const second = ::operator new(8);
    for (void* const block : {::operator new(8), second, static_cast<void*>(nullptr), ::operator new[](8)}) {
        array.AddPtr(block);
    }
    EXPECT_TRUE(array.RemovePtrAtIndex(0));
    EXPECT_TRUE(array.RemovePtr(second));
    array.FreeMem();
    array.AddPtr(::operator new[](8)); // left to the destructor
}

} // namespace
