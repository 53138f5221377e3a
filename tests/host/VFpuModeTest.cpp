#include "foundation/host/VFpuMode.h"

#include <gtest/gtest.h>

namespace {

using namespace VFoundation;

double Third(double one) {
    double volatile dividend = one; // not at compile time
    return dividend / 3.0;
}

TEST(VFpuMode, RoundsAsAskedForAScope) {
    double const nearest = Third(1);
    {
        VFpuMode const up(VFpuMode::kUpward);
        double const above = Third(1);
        EXPECT_GT(above, nearest);
        {
            VFpuMode const down(VFpuMode::kDownward);
            EXPECT_EQ(Third(1), nearest);
            EXPECT_EQ(Third(-1), -above);
            VFpuMode const zero(VFpuMode::kTowardZero);
            EXPECT_EQ(Third(-1), -nearest);
        }
        EXPECT_EQ(Third(1), above) << "the outer mode is back";
    }
    EXPECT_EQ(Third(1), nearest);
}

} // namespace
