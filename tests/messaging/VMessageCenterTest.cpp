#include "foundation/core/VGarbageCan.h"
#include "foundation/messaging/VMessageCenterJob.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VThread.h"
#include "tests/messaging/TestMessenger.h"
#include "tests/support/FailingNew.h"
#include "tests/support/Fork.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfenv>
#include <regex>
#include <stdexcept>
#include <thread>

namespace {

using namespace VFoundation;
using namespace testing_support;

bool Post(Center const& center, Messenger const& target, int id = 0) {
    VMessage message;
    message.SetMessageID(id);
    return center->MessageDelay(target.Get(), &message);
}

TEST(VMessageCenter, HoldsAsManyCommandsAsItsCapacity) {
    auto const target = NewMessenger();
    for (int capacity : {-1, 0, 1, 3}) {
        auto const center = NewCenter(capacity);
        for (int round = 0; round < 2; ++round) { // serviced commands are used again
            for (int i = 0; i < capacity; ++i) {
                EXPECT_TRUE(Post(center, target, i));
            }
            EXPECT_FALSE(Post(center, target, 9));
            long const count = std::max(capacity, 0);
            EXPECT_EQ(center->CommandCountMin(), count);
            EXPECT_EQ(center->SendDelayedCommands(), count);
            EXPECT_EQ(target->TakeNotes(),
                      std::string("m0 m1 m2 ").substr(0, 3 * static_cast<std::size_t>(count)));
        }
        EXPECT_EQ(target->RetainCount(), 1);
    }
}

TEST(VMessageCenter, CountsWhatIsLostAndTellsOfTheFirst) {
    auto const center = NewCenter(2);
    auto const target = NewMessenger();
    int told = 0;
    center->TellOfNextLoss([&] {
        ++told;
        throw 1;
    });
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(Post(center, target), i < 2);
    }
    EXPECT_EQ(center->DroppedCommands(), 3);
    EXPECT_EQ(told, 1);
    center->SetAccepting(false);
    EXPECT_FALSE(Post(center, target));
    EXPECT_FALSE(center->MessageDelay(target.Get(), nullptr)); // a mistake, and no loss
    EXPECT_EQ(center->RefusedCommands(), 1);
    EXPECT_EQ(center->DroppedCommands(), 3);
    center->TellOfNextLoss([&] { told += 10; });
    center->StopCenter(); // with two in the queue
    EXPECT_EQ(center->DroppedCommands(), 5);
    EXPECT_EQ(told, 11);
    center->TellOfNextLoss([&] { told += 100; });
    center->TellOfNextLoss(nullptr);
    EXPECT_FALSE(Post(center, target));
    EXPECT_EQ(told, 11);
    EXPECT_EQ(center->SlowCommands(), 0);
}

TEST(VMessageCenter, CarriesMessagesAndConnectionsUntilItIsServiced) {
    auto const center = NewCenter(8);
    auto const source = NewMessenger();
    auto const target = NewMessenger();
    EXPECT_TRUE(center->ConnectDelayed(source.Get(), 0, center.Get(), target.Get(), 2));
    EXPECT_TRUE(center->ConnectDelayed(nullptr, 0, nullptr, target.Get(), 2)); // counts, and does nothing
    EXPECT_TRUE(center->MessageDelay(nullptr, VObjectRef<VMessage>::Adopt(VMessage::New()).Get()));
    EXPECT_FALSE(center->MessageDelay(target.Get(), nullptr));
    EXPECT_EQ(source->Send(0), 0);
    EXPECT_EQ(center->SendDelayedCommands(), 3);
    EXPECT_EQ(source->TakeNotes() + target->TakeNotes(), "o0 i2 ");

    EXPECT_EQ(source->Send(0), 1); // the connection delays what it carries
    EXPECT_TRUE(center->DisconnectDelayed(source.Get(), 0, center.Get(), target.Get(), 2));
    EXPECT_EQ(target->TakeNotes(), "");
    EXPECT_EQ(center->SendDelayedCommands(), 2);
    EXPECT_EQ(target->TakeNotes(), "m2 i2 ");
    EXPECT_EQ(source->Send(0), 0);
    EXPECT_EQ(center->RetainCount() + source->RetainCount() + target->RetainCount(), 3);
}

TEST(VMessageCenter, KeepsTargetsAliveAndParksThemInTheGarbageCan) {
    auto const center = NewCenter(4);
    for (bool withCan : {false, true}) {
        auto const can = VObjectRef<VGarbageCan>::Adopt(VGarbageCan::New());
        VCommandTuple::SetGarbageCan(withCan ? can.Get() : nullptr);
        int received = 0;
        Post(center, NewMessenger([&](VMessage*) { ++received; }));
        auto const kept = NewMessenger();
        Post(center, kept);
        center->SendDelayedCommands();
        EXPECT_EQ(received, 1);
        EXPECT_EQ(can->ParkedCount(), withCan ? 1 : 0);
        Post(withCan ? center : NewCenter(1),
             NewMessenger()); // dropped, by the stop of its centre or by its end
        withCan ? center->StopCenter() : static_cast<void>(center->CommandCountMin());
        VCommandTuple::UninitializeClass();
        EXPECT_EQ(can->ParkedCount(), withCan ? 2 : 0);
        EXPECT_EQ(can->OpenCount(), 0);
        EXPECT_EQ(ATestMessenger::ms_alive, withCan ? 3 : 1);
        EXPECT_EQ(can->RetainCount(), 1);
    }
    EXPECT_EQ(ATestMessenger::ms_alive, 0);
}

struct ASlowMessenger : ATestMessenger {
    bool TouchInMessage(int) override { return VThread::Sleep(2), true; }
    void ReceiveMessage(VMessage* message) override { TouchInMessage(message->MessageID()); }
};

TEST(VMessageCenter, ReportsSlowCommands) {
    auto const center = NewCenter(3);
    auto const slow = Messenger::Adopt(new ASlowMessenger);
    center->ConnectDelayed(slow.Get(), 0, nullptr, slow.Get(), 0);
    center->DisconnectDelayed(slow.Get(), 0, nullptr, slow.Get(), 0);
    Post(center, slow);
    testing::internal::CaptureStderr();
    center->SendDelayedCommands();
    auto const text = testing::internal::GetCapturedStderr();
    std::string const tail = " LONG MESSAGE SERVICE TIME DETECTED! 0\\.(00[2-9]|0[1-9]|[1-9])[0-9]*\n";
    std::regex const whole("\\[Connect\\]" + tail + "\\[Disconnect\\]" + tail + "\\[Message\\]" + tail +
                           "Message: NULL \\[msg:-1\\] -> tester \\[msg:-1\\]\n");
    EXPECT_TRUE(std::regex_match(text, whole)) << text;
    EXPECT_EQ(text.find('\n') - text.find('.'), 7U) << "six decimals";
    EXPECT_EQ(center->SlowCommands(), 3);
}

TEST(VMessageCenter, TimesAHandlerThatServicesOthersFromItsOwnStart) {
    auto const center = NewCenter(2);
    Post(center, NewMessenger([&](VMessage*) {
             VThread::Sleep(2);
             Post(center, NewMessenger());
             center->SendDelayedCommands();
         }));
    testing::internal::CaptureStderr();
    center->SendDelayedCommands();
    EXPECT_NE(testing::internal::GetCapturedStderr().find("[Message] LONG"), std::string::npos);
}

/// Counts the connections that it is asked to make and to break.
class ACountingCenter : public VMessageCenter {
  public:
    ACountingCenter() : VMessageCenter(4) {}
    bool ConnectImmediate(VMessenger*, int, VMessageCenter*, VMessenger*, int) override { return ++m_calls; }
    bool DisconnectImmediate(VMessenger*, int, VMessageCenter*, VMessenger*, int) override {
        return ++m_calls;
    }
    int m_calls = 0;
};

TEST(VMessageCenter, PassesOnOnlyWhatHasBothMessengers) {
    ACountingCenter center;
    auto const one = NewMessenger();
    for (auto* const source : {static_cast<ATestMessenger*>(nullptr), one.Get()}) {
        center.ConnectDelayed(source, 0, nullptr, one.Get(), 0);
        center.ConnectDelayed(one.Get(), 0, nullptr, source, 0);
        center.DisconnectDelayed(source, 0, nullptr, one.Get(), 0);
        center.DisconnectDelayed(one.Get(), 0, nullptr, source, 0);
        EXPECT_EQ(center.SendDelayedCommands(), 4);
        EXPECT_EQ(center.m_calls, source ? 4 : 0);
    }
}

TEST(VMessageCenter, TakesBackACommandThatFoundNoMemory) {
    auto const center = NewCenter(1);
    auto const target = NewMessenger();
    VMessage message;
    message.FirstArg().SetValueToString(VString("a string, which is copied"));
    FailEachNew([&] {
        bool const posted = center->MessageDelay(target.Get(), &message);
        bool const failed = NewHasFailed();
        EXPECT_NE(posted, failed);
        EXPECT_EQ(center->SendDelayedCommands(), posted ? 1 : 0);
        EXPECT_EQ(target->RetainCount(), 1);
        return failed;
    });
}

/// What lets a test stand between a push and the clearing of the flag after it.
struct ADelayer : VCommandDelayer {
    using VCommandDelayer::PushThenMark;
    long SendDelayedCommands() override {
        ++m_services;
        SetServiced(false); // a post in the middle of the service
        return 0;
    }
    VCriticalSection* GetCriticalSection() override { return ++m_asked, nullptr; }
    int m_asked = 0;
    std::atomic<int> m_services{0};
};

TEST(VMessageCenter, NoServiceForgetsAPostBesideIt) {
    ADelayer delayer;
    delayer.SetServiced(true);
    EXPECT_FALSE(delayer.PushThenMark([] { return false; }));
    EXPECT_TRUE(delayer.Serviced()) << "nothing was queued";
    EXPECT_TRUE(
        delayer.PushThenMark([&] { return delayer.SetServiced(true), true; })); // a service before the push
    EXPECT_FALSE(delayer.Serviced());

    auto const center = NewCenter(2);
    auto const target = NewMessenger();
    Post(center, NewMessenger([&](VMessage*) { Post(center, target); }));
    center->SendDelayedCommands();
    EXPECT_FALSE(center->Serviced()) << "the service must not hide the post";

    auto const polled = VObjectRef<ADelayer>::Adopt(new ADelayer);
    auto const job = VObjectRef<VMessageCenterJob>::Adopt(new VMessageCenterJob(polled.Get(), 1));
    std::thread runner([&] { job->DoJob(); });
    WaitUntil([&] { return polled->m_services >= 2; }); // a poll sets the flag before its service
    job->AbortJob();
    runner.join();
    EXPECT_EQ(polled->m_asked, 1) << "asked once for the critical section";
}

/// Stops a centre while a command for it is filled.
struct AStoppingMessenger : ATestMessenger {
    void Retain() const override {
        ATestMessenger::Retain();
        if (auto* const center = std::exchange(m_center, nullptr)) {
            center->StopCenter();
        }
    }
    mutable VMessageCenter* m_center = nullptr;
};

TEST(VMessageCenter, KeepsNoCommandOverItsStop) {
    VClass const* const record = VCommandTuple::TheClass();
    long const before = record->Existing();
    for (bool const inHandler : {true, false}) {
        auto const center = NewCenter(2);
        auto const target = VObjectRef<AStoppingMessenger>::Adopt(new AStoppingMessenger);
        if (inHandler) {
            Post(center, NewMessenger([&](VMessage*) { center->StopCenter(); }));
            center->SendDelayedCommands();
        } else {
            target->m_center = center.Get();
            VMessage message;
            center->MessageDelay(target.Get(), &message);
            EXPECT_EQ(target->m_center, nullptr);
        }
        EXPECT_EQ(center->CommandCountMin(), 0);
        EXPECT_EQ(target->RetainCount(), 1);
        EXPECT_EQ(record->Existing(), before);
    }
}

TEST(VMessageCenter, LivesAsLongAsItsService) {
    auto* const center = NewCenter(2).Detach();
    auto const releasing = NewMessenger([&](VMessage*) { center->Release(); });
    auto const target = NewMessenger();
    VMessage message;
    center->MessageDelay(releasing.Get(), &message);
    center->MessageDelay(target.Get(), &message);
    EXPECT_EQ(center->SendDelayedCommands(), 2);
    EXPECT_EQ(target->TakeNotes(), "m-1 ");
}

TEST(VMessageCenter, SurvivesAnExceptionOfAHandler) {
    auto const center = NewCenter(2);
    auto const bad = NewMessenger([](VMessage*) { throw std::runtime_error("bad"); });
    auto const good = NewMessenger();
    Post(center, bad);
    Post(center, good);
    EXPECT_THROW(center->SendDelayedCommands(), std::runtime_error);
    EXPECT_FALSE(center->Serviced()); // a job will look again
    EXPECT_TRUE(Post(center, good));  // the bad command is free again
    EXPECT_EQ(center->SendDelayedCommands(), 2);
    EXPECT_TRUE(center->Serviced());

    std::atomic<bool> later{false};
    Post(center, bad);
    Post(center, NewMessenger([&](VMessage*) { later = true; }));
    center->StartCenter(UniqueName().c_str(), 1);
    WaitUntil([&] { return later.load(); }); // the job goes on
    center->StopCenter();
}

TEST(VMessageCenter, RefusesPostsWhenClosedOrStopped) {
    auto const center = NewCenter(2);
    auto const target = NewMessenger();
    center->SetAccepting(false);
    EXPECT_FALSE(Post(center, target));
    center->SetAccepting(true);
    EXPECT_TRUE(center->ConnectDelayed(target.Get(), 0, center.Get(), target.Get(), 0));
    center->StopCenter();
    center->StopCenter();
    EXPECT_EQ(center->SendDelayedCommands(), 0);
    EXPECT_EQ(target->RetainCount() + center->RetainCount(), 2);
    EXPECT_FALSE(Post(center, target));
    EXPECT_FALSE(center->IsAccepting());
}

TEST(VMessageCenterStarted, ServicesEveryPostAndRoundsDownward) {
    auto const center = NewCenter(4);
    std::string const name = UniqueName();
    center->StartCenter(name.c_str(), -7); // counts as 1
    center->StartCenter(name.c_str(), 1);
    std::atomic<int> received{0};
    std::atomic<int> rounding{-1};
    std::vector<double> services; // when they began
    auto const target = NewMessenger([&](VMessage*) {
        rounding = std::fegetround();
        if (services.empty() || services.back() != center->LastServiceTime()) {
            services.push_back(center->LastServiceTime());
        }
        ++received;
    });
    for (int i = 1; i <= 4; ++i) {
        EXPECT_TRUE(Post(center, target));
        WaitUntil([&] { return received == i; });
    }
    EXPECT_GE(services.size(), 2U) << "the last service may take a post along that came meanwhile";
    for (std::size_t i = 1; i < services.size(); ++i) {
        EXPECT_GT(services[i], services[i - 1] + center->ServiceInterval());
    }
    EXPECT_EQ(rounding, FE_DOWNWARD);
    EXPECT_NE(std::fegetround(), FE_DOWNWARD);
    center->StopCenter();
    center->StartCenter(name.c_str(), 1);
    EXPECT_FALSE(Post(center, target));
    center->StopCenter();
    EXPECT_EQ(center->RetainCount(), 1);
}

TEST(VMessageCenterStarted, ServicesNothingWhileItsCriticalSectionIsHeld) {
    auto const center = NewCenter(4);
    auto const section = VObjectRef<VCriticalSection>::Adopt(VCriticalSection::New());
    center->SetCriticalSection(section.Get());
    section->EnterCriticalSection();
    center->StartCenter(UniqueName().c_str(), 1);
    std::atomic<bool> received{false};
    Post(center, NewMessenger([&](VMessage*) { received = true; }));
    VThread::Sleep(250); // two services would be due
    EXPECT_FALSE(received);
    EXPECT_FALSE(center->Serviced());
    section->LeaveCriticalSection();
    WaitUntil([&] { return received.load(); });
    center->StopCenter();
}

TEST(VMessageCenterStarted, MayBeStoppedAndReleasedByItsHandler) {
    std::atomic<int> handled{0};
    auto* const center = NewCenter(4).Detach();
    VClass const* const record = center->Class();
    long const before = record->Existing();
    auto const target = NewMessenger([&](VMessage*) {
        center->StopCenter();
        if (++handled == 1) {
            center->Release();
        }
    });
    VMessage message;
    center->MessageDelay(target.Get(), &message);
    center->MessageDelay(target.Get(), &message); // dropped by the stop
    testing::internal::CaptureStderr();
    center->StartCenter(UniqueName().c_str(), 1);
    WaitUntil([&] { return record->Existing() == before - 1; });
    EXPECT_EQ(testing::internal::GetCapturedStderr().find("stuck"), std::string::npos)
        << "it waited for itself";
    EXPECT_EQ(handled, 1);
}

TEST(VMessageCenterStarted, AStopEndsTheSleepBetweenPolls) {
    auto const center = NewCenter(1);
    center->StartCenter(UniqueName().c_str(), 3'600'000);
    VThread::Sleep(20); // until it sleeps; else there is nothing to see
    center->StopCenter();
    EXPECT_EQ(center->RetainCount(), 1);
}

TEST(VMessageCenterStarted, ItsOwnerWaitsForAHandlerThatHasStoppedIt) {
    auto const center = NewCenter(4);
    std::atomic<bool> stopped{false};
    std::atomic<bool> over{false};
    Post(center, NewMessenger([&](VMessage*) {
             center->StopCenter();
             stopped = true;
             VThread::Sleep(50);
             over = true;
         }));
    center->StartCenter(UniqueName().c_str(), 1);
    WaitUntil([&] { return stopped.load(); });
    center->StopCenter();
    EXPECT_TRUE(over);
    EXPECT_EQ(center->RetainCount(), 1);
}

TEST(VMessageCenterStarted, IsNotServicedInAChildProcessAndStartsAgain) {
    auto const center = NewCenter(4);
    std::atomic<int> received{0};
    auto const target = NewMessenger([&](VMessage*) { ++received; });
    std::string const name = UniqueName();
    center->StartCenter(name.c_str(), 1);
    Post(center, target);
    WaitUntil([&] { return received == 1; });
    for (bool const again : {true, false}) {
        InChild([&] {
            if (again) {
                center->StartCenter(name.c_str(), 1);
                Post(center, target);
                WaitUntil([&] { return received == 2; });
            }
            center->StopCenter();
            EXPECT_EQ(center->RetainCount(), 1);
        });
    }
    Post(center, target);
    WaitUntil([&] { return received == 2; });
    center->StopCenter();
}

TEST(VMessageCenterJob, EndsBeforeItBegan) {
    auto const center = NewCenter(1);
    auto const job = VObjectRef<VMessageCenterJob>::Adopt(new VMessageCenterJob(center.Get(), 1));
    EXPECT_TRUE(job->AbortJob());
    EXPECT_EQ(center->RetainCount(), 1);
    EXPECT_TRUE(job->DoJob());
    EXPECT_TRUE(job->AbortJob());
}

} // namespace
