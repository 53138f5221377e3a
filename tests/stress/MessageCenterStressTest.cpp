#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "tests/messaging/TestMessenger.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace VFoundation;
using namespace testing_support;

constexpr int kPosters = 4;

// While messages are posted the centre is serviced by hand without a pause; what is left then is the job's.
TEST(MessageCenterStress, LosesNoMessageAndForgetsNone) {
    int const messages = 250000 * StressFactor();
    auto const center = NewCenter(64);
    auto const section = VObjectRef<VCriticalSection>::Adopt(VCriticalSection::New());
    center->SetCriticalSection(section.Get());
    std::vector<std::vector<char>> seen(kPosters, std::vector<char>(static_cast<std::size_t>(messages)));
    std::atomic<bool> twice{false};
    std::atomic<long> delivered{0};
    auto const target = NewMessenger([&](VMessage* message) {
        char& mark = seen[static_cast<std::size_t>(message->MessageID())]
                         [static_cast<std::size_t>(message->FirstArg().GetInt())];
        twice = twice || mark != 0;
        mark = 1;
        ++delivered;
    });
    center->StartCenter(UniqueName().c_str(), 1);
    std::atomic<long> refused{0};
    std::atomic<int> posting{kPosters};
    OnThreads(kPosters + 1, [&](int poster) {
        if (poster == kPosters) {
            while (posting > 0) {
                VCriticalSectionScope const scope(section.Get());
                center->SendDelayedCommands();
            }
            return;
        }
        VMessage message;
        message.SetMessageID(poster);
        for (int number = 0; number < messages; ++number) {
            message.FirstArg().SetValueToInt(number);
            refused += center->MessageDelay(target.Get(), &message) ? 0 : 1;
        }
        --posting;
    });
    WaitUntil([&] { return delivered + refused == long{kPosters} * messages; });
    center->StopCenter();
    EXPECT_GT(delivered, 64);
    EXPECT_FALSE(twice);
    EXPECT_EQ(target->RetainCount(), 1);
}

// At all moments of a centre's life: before its job has begun, between polls and while handlers run.
// Meanwhile others post, and find each centre open or stopped.
TEST(MessageCenterStress, StartsAndStopsTwoHundredCenters) {
    auto const target = NewMessenger([](VMessage*) {});
    OnThreads(40, [&](int thread) {
        for (int round = 0; round < 5 * StressFactor(); ++round) {
            auto const center = NewCenter(16);
            std::atomic<bool> stopped{false};
            std::thread poster([&] {
                VMessage message;
                while (!stopped) {
                    static_cast<void>(center->MessageDelay(target.Get(), &message));        // open or stopped
                    center->ConnectDelayed(target.Get(), 9, center.Get(), target.Get(), 9); // to no effect
                    usleep(100);
                }
            });
            center->StartCenter(UniqueName().c_str(), 1);
            usleep(static_cast<useconds_t>(thread % 8 * 500));
            center->StopCenter();
            EXPECT_FALSE(center->IsAccepting());
            stopped = true;
            poster.join();
            EXPECT_EQ(center->CommandCountMin(), 0);
            EXPECT_EQ(center->RetainCount(), 1); // neither its job nor a command holds it
        }
    });
    EXPECT_EQ(target->RetainCount(), 1);
}

TEST(MessageCenterStress, MakesAndBreaksMoreConnectionsThanThePoolHolds) {
    constexpr int kConnections = 9000;
    static_assert(kConnections > VConnectionTuple::kPoolCapacity);
    VConnectionTuple::TheClass();
    long const pooled = VConnectionTuple::ms_recycledConnections.load()->UsedCount();
    auto const center = NewCenter(3 * kConnections);
    auto const source = NewMessenger();
    auto const target = NewMessenger();
    std::atomic<long> delivered{0};
    std::atomic<long> posted{0};
    auto const other = NewMessenger([&](VMessage*) { ++delivered; });
    center->StartCenter(UniqueName().c_str(), 1);
    for (int round = 0; round < StressFactor(); ++round) {
        for (bool connect : {true, false}) {
            OnThreads(3, [&](int thread) {
                VMessage message;
                for (int i = thread; i < kConnections; i += 3) {
                    auto const change =
                        connect ? &VMessageCenter::ConnectDelayed : &VMessageCenter::DisconnectDelayed;
                    while (!(center.Get()->*change)(source.Get(), i % 3, center.Get(), target.Get(), i % 3)) {
                        usleep(100);
                    }
                    posted += center->MessageDelay(other.Get(), &message) ? 1 : 0;
                }
            });
            WaitUntil([&] { return center->CommandCountMin() == 0 && delivered == posted; });
            long const made = connect ? kConnections : 0;
            WaitUntil([&] { return source->RetainCount() == 1 + made && target->RetainCount() == 1 + made; });
            EXPECT_EQ(VConnectionTuple::ms_recycledConnections.load()->UsedCount(), connect ? 0 : pooled);
        }
    }
    center->StopCenter();
    EXPECT_EQ(center->RetainCount() + source->RetainCount() + target->RetainCount() + other->RetainCount(),
              4);
}

} // namespace
