#include "foundation/core/VGarbageCan.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

TEST(GarbageCan, KeepsObjectsAliveUntilItDies) {
    auto* const can = new VGarbageCan(2);
    auto* const object = ACounted::New();
    EXPECT_TRUE(can->AddGarbageToCan(object));
    EXPECT_TRUE(can->AddGarbageToCan(object));
    EXPECT_FALSE(can->AddGarbageToCan(object)); // full: not parked
    EXPECT_FALSE(can->AddGarbageToCan(nullptr));
    EXPECT_EQ(object->RetainCount(), 3);
    object->Release();
    EXPECT_EQ(ACounted::ms_alive, 1);
    can->Release();
    EXPECT_EQ(ACounted::ms_alive, 0);
}

TEST(GarbageCan, OpeningsPairUp) {
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
    EXPECT_TRUE(can->OpenGarbageCan());
    EXPECT_TRUE(can->CloseGarbageCan());
    EXPECT_EQ(can->RetainCount(), 1);
}

} // namespace
