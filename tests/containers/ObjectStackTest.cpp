#include "foundation/containers/VObjectStack.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

TEST(ObjectStack, PopsTheLastAndHandsItsReferenceOver) {
    VObjectStack stack;
    EXPECT_EQ(stack.Pop(), nullptr);
    EXPECT_EQ(stack.ObjectAtTopOfStack(), nullptr);
    auto* const object = ACounted::New();
    stack.Array().AddObject(nullptr);
    stack.Array().AddObject(object);
    object->Release();
    EXPECT_EQ(stack.ObjectAtTopOfStack(), object);
    EXPECT_EQ(stack.Pop(), object);
    EXPECT_EQ(object->RetainCount(), 1);
    object->Release();
}

TEST(ObjectStack, LeavesANullOnTop) {
    VObjectStack stack;
    stack.Array().AddObject(nullptr);
    EXPECT_EQ(stack.Pop(), nullptr);
    EXPECT_EQ(stack.Array().Count(), 1);
}

} // namespace
