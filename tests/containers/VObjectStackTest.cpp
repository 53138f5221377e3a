#include "foundation/containers/VObjectStack.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

TEST(VObjectStack, LeavesANullOnTop) {
    VObjectStack stack;
    EXPECT_EQ(stack.Pop(), nullptr);
    stack.Array().AddObject(nullptr);
    EXPECT_EQ(stack.Pop(), nullptr);
    EXPECT_EQ(stack.Array().Count(), 1);
    ACounted object;
    EXPECT_TRUE(stack.Push(&object));
    EXPECT_EQ(stack.ObjectAtTopOfStack(), &object);
    EXPECT_EQ(stack.Pop(), &object);
    EXPECT_EQ(object.RetainCount(), 2) << "the stack's reference is handed over";
    object.Release();
}

} // namespace
