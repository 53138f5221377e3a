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
        EXPECT_TRUE(can.AddGarbageToCan(&object));
        EXPECT_TRUE(can.AddGarbageToCan(&object));
        EXPECT_FALSE(can.AddGarbageToCan(&object)); // full: not parked
        EXPECT_FALSE(can.AddGarbageToCan(nullptr));
        EXPECT_EQ(object.RetainCount(), 3);
    }
    EXPECT_EQ(object.RetainCount(), 1);
}

/// Puts another object into the can when it is destroyed.
struct AComingBack : VObject {
    explicit AComingBack(VGarbageCan* can) : m_can(can) {}
    ~AComingBack() override { m_parked = m_can->AddGarbageToCan(m_other.Get()); }
    static inline bool m_parked = true;
    VGarbageCan* m_can;
    VObjectRef<ACounted> m_other = VObjectRef<ACounted>::Adopt(ACounted::New());
};

TEST(VGarbageCan, TakesNothingMoreWhileItReleases) {
    {
        VGarbageCan can(4);
        auto* const object = new AComingBack(&can);
        can.AddGarbageToCan(object);
        object->Release();
    }
    EXPECT_FALSE(AComingBack::m_parked);
    EXPECT_EQ(ACounted::ms_alive, 0);
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
