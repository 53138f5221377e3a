#include "foundation/strings/values/VRange.h"

#include "foundation/strings/values/VTimeRange.h"

#include "foundation/strings/VString.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>

namespace {

using namespace VFoundation;

TEST(VRange, StaysInsideItsNumbers) {
    EXPECT_EQ(VRange(INT32_MAX - 3, 5).Length(), 3);
    EXPECT_EQ(VRange(INT32_MIN, INT32_MAX).End(), -1);
    EXPECT_EQ(VRange(3, -5).Length(), 0);
    EXPECT_TRUE(VRange(INT32_MIN, 1).Union(VRange(INT32_MAX - 1, 1)) == VRange(INT32_MIN, INT32_MAX));
    EXPECT_TRUE(VRange(0, 4).Union(VRange(8, 2)) == VRange(0, 10));
    EXPECT_TRUE(VRange(0, 4).Union(VRange(99, 0)) == VRange(0, 4));
    EXPECT_TRUE(VRange(0, 4).Intersection(VRange(2, 9)) == VRange(2, 2));
    EXPECT_TRUE(VRange(1, 4).Intersection(VRange(5, 9)) == VRange());
    EXPECT_TRUE(VRange(-2, 2).Contains(-2));
    EXPECT_FALSE(VRange(-2, 2).Contains(0));
    EXPECT_FALSE(VRange(4, 0).Contains(4));
}

TEST(VTimeRange, StaysInsideItsNumbers) {
    EXPECT_EQ(VTimeRange(1e308, HUGE_VAL).End(), DBL_MAX);
    EXPECT_EQ(VTimeRange(-HUGE_VAL, -1).Start(), -DBL_MAX);
    EXPECT_TRUE(VTimeRange(std::nan(""), std::nan("")) == VTimeRange());
    EXPECT_TRUE(VTimeRange(1e300, 1).IsEmpty()) << "a second is nothing there";
    EXPECT_EQ(VTimeRange(-DBL_MAX, 1e300).Union(VTimeRange(1e308, 1e300)).Duration(), DBL_MAX);
    EXPECT_FALSE(VTimeRange(0, 1).Contains(1));
    EXPECT_FALSE(VTimeRange(0, 1).Contains(std::nan("")));
}

/// Few of these numbers have exact sums and differences.
TEST(VTimeRange, ObeysTheLawsOfSetsWithInexactNumbers) {
    std::mt19937 random(11);
    auto const number = [&] {
        return std::ldexp(static_cast<double>(random()) / 7, -static_cast<int>(random() % 60));
    };
    VTimeRange a(0.1, 0.2);
    for (int i = 0; i < 20000; ++i) {
        VTimeRange const b(random() % 2 ? number() - number() : a.Start(), number());
        SCOPED_TRACE(a.Description().CString() + std::string(b.Description().CString()));
        VTimeRange const both = a.Intersection(b);
        VTimeRange const either = a.Union(b);
        ASSERT_TRUE(both == b.Intersection(a));
        if (!a.IsEmpty()) {
            ASSERT_TRUE(either == b.Union(a));
            ASSERT_TRUE(a.Intersection(a) == a);
            ASSERT_TRUE(a.Union(a) == a);
            ASSERT_TRUE(a.Intersection(either) == a);
            ASSERT_TRUE(a.Union(both) == a);
            ASSERT_GE(either.End(), a.End());
        }
        if (!both.IsEmpty()) {
            ASSERT_LE(both.End(), std::min(a.End(), b.End()));
            ASSERT_GE(std::nextafter(both.Duration(), DBL_MAX) + both.Start(), std::min(a.End(), b.End()));
        }
        a = b;
    }
}

} // namespace
