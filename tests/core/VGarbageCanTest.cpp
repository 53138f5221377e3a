#include "foundation/core/VGarbageCan.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

TEST(VGarbageCan, KeepsObjectsAliveUntilItDies) {
    ACounted object;
    {
        VGarbageCan can(2);
        EXPECT_TRUE(can.AddGarbageToCan(&object) && can.AddGarbageToCan(&object));
        EXPECT_FALSE(can.AddGarbageToCan(&object) || can.AddGarbageToCan(nullptr)); // full: not parked
        EXPECT_EQ(object.RetainCount(), 3);
    }
    EXPECT_EQ(object.RetainCount(), 1);
}

TEST(VGarbageCan, OpeningsPairUp) {
    auto const can = VObjectRef<VGarbageCan>::Adopt(VGarbageCan::New());
    EXPECT_FALSE(can->CloseGarbageCan());
    EXPECT_EQ(can->OpenCount(), 0);
    {
        VGarbageCan::Context const outer(can.Get());
        VGarbageCan::Context const inner(can.Get());
        VGarbageCan::Context const none(nullptr);
        EXPECT_EQ(can->OpenCount(), 2);
        EXPECT_EQ(can->RetainCount(), 3);
    }
    EXPECT_EQ(can->OpenCount(), 0);
    EXPECT_EQ(can->RetainCount(), 1);
}

} // namespace
