#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "tests/messaging/TestMessenger.h"
#include "tests/support/FailingNew.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace {

using namespace VFoundation;
using namespace testing_support;
using Tuple = VObjectRef<VConnectionTuple>;

TEST(VMessage, ComparesTypesAndCopiesAllButTheUserData) {
    VMessage typed;
    typed.SetMessageID(7);
    typed.FirstArg().SetValueToInt(1);
    typed.SetUserData(&typed);
    auto const copy = VObjectRef<VMessage>::Adopt(typed.Copy());
    copy->FirstArg().SetValueToInt(2); // values do not count
    EXPECT_TRUE(typed.Matches(copy.Get()));
    EXPECT_TRUE(typed.Receivable(copy.Get()));
    EXPECT_EQ(copy->MessageID(), 7);
    EXPECT_EQ(copy->UserData(), nullptr);
    copy->SecondArg().SetValueToInt(1);
    EXPECT_FALSE(typed.Matches(copy.Get()));
    EXPECT_FALSE(typed.Receivable(copy.Get()));
    copy->Clear();
    EXPECT_EQ(copy->MessageID(), -1);
    EXPECT_TRUE(typed.Receivable(copy.Get())); // no type fits any
    EXPECT_FALSE(copy->Receivable(&typed));    // but not on this side
    EXPECT_FALSE(typed.Matches(copy.Get()));
    EXPECT_FALSE(typed.Matches(nullptr));
    EXPECT_FALSE(typed.Receivable(nullptr));
}

TEST(VConnectionTuple, ChecksIdsFromAboveOnly) {
    struct Case {
        int out, in;
        bool connected;
        char const* notes;
    };
    auto const center = NewCenter(0);
    for (Case const& c : {Case{2, 2, true, "o2 i2 "}, Case{3, 2, false, ""}, Case{2, 3, false, ""},
                          Case{-1, 0, false, "o-1 i0 "}, Case{0, -5, true, "o0 i-5 "}}) {
        auto const one = NewMessenger();
        EXPECT_FALSE(center->DisconnectImmediate(one.Get(), c.out, nullptr, one.Get(), c.in));
        EXPECT_EQ(one->TakeNotes(), ""); // it has no table yet
        EXPECT_EQ(center->ConnectImmediate(one.Get(), c.out, nullptr, one.Get(), c.in), c.connected);
        EXPECT_EQ(one->TakeNotes(), c.notes);
        EXPECT_EQ(center->ReconnectImmediate(one.Get(), c.out, nullptr, one.Get(), c.in), c.connected);
        EXPECT_EQ(one->Send(c.out), c.connected ? 1 : 0);
        EXPECT_EQ(center->DisconnectImmediate(one.Get(), c.out, nullptr, one.Get(), c.in), c.connected);
        EXPECT_FALSE(center->DisconnectImmediate(one.Get(), c.out, nullptr, one.Get(), c.in));
    }
    auto const one = NewMessenger();
    EXPECT_FALSE(center->ConnectImmediate(nullptr, 0, nullptr, one.Get(), 0));
    EXPECT_FALSE(center->ConnectImmediate(one.Get(), 0, nullptr, nullptr, 0));
    EXPECT_EQ(one->RetainCount(), 1);
}

TEST(VConnectionTuple, DeliversInOrderAndRemovesTheLatest) {
    auto const source = NewMessenger();
    auto const target = NewMessenger();
    auto const first = source->AddConnection(1, target.Get(), 5, nullptr);
    source->AddConnection(1, target.Get(), 6, nullptr);
    auto const again = source->AddConnection(1, target.Get(), 5, nullptr);
    EXPECT_EQ(source->GetConnectionsCount(), 2); // ids, not connections
    EXPECT_EQ(source->Send(1), 3);
    EXPECT_EQ(target->TakeNotes(), "m5 m6 m5 ");

    VCommandDelayer other; // takes no part in the match
    EXPECT_EQ(source->RemoveConnection(1, target.Get(), 5, &other).Get(), again.Get());
    EXPECT_EQ(source->RemoveConnection(1, target.Get(), 5, nullptr).Get(), first.Get());
    for (int id : {-1, 0, 1, 2}) {
        EXPECT_FALSE(source->RemoveConnection(id, target.Get(), 5, nullptr)) << id;
    }
    VMessage message;
    message.SetMessageID(42);
    EXPECT_EQ(first->MessageSend(&message), 42);
    EXPECT_EQ(message.MessageID(), 42);
    EXPECT_EQ(target->TakeNotes(), "m5 ");
    EXPECT_EQ(first->MessageSend(nullptr), -1);
    auto const full = NewCenter(0);
    first->Set(source.Get(), 1, target.Get(), 5, full.Get());
    EXPECT_EQ(first->MessageSend(&message), 42) << "although it is lost";
    EXPECT_TRUE(source->RemoveConnection(1, target.Get(), 6, nullptr));
}

TEST(VConnectionTuple, IsMadeWhollyOrNotAtAll) {
    auto const center = NewCenter(1);
    auto const target = NewMessenger();
    // Before the sweep: the first tuple of a process sets up its class, whose pool may do without memory.
    ASSERT_TRUE(center->ConnectImmediate(target.Get(), 1, center.Get(), target.Get(), 0));
    ASSERT_TRUE(center->DisconnectImmediate(target.Get(), 1, nullptr, target.Get(), 0));
    FailEachNew([&] {
        long const number = std::exchange(t_failingNew, 0);
        auto const source = NewMessenger();
        t_failingNew = number;
        bool const made = center->ConnectImmediate(source.Get(), 2, center.Get(), target.Get(), 0);
        bool const failed = NewHasFailed();
        EXPECT_NE(made, failed);
        EXPECT_EQ(center->DisconnectImmediate(source.Get(), 2, nullptr, target.Get(), 0), made);
        EXPECT_EQ(source->RetainCount(), 1);
        return failed;
    });
    EXPECT_EQ(target->RetainCount(), 1);
}

TEST(VConnectionTuple, MayBeMadeAndBrokenByReceivers) {
    auto const source = NewMessenger();
    std::string order;
    int alive = 0; // at the end of a handler, which may still use its messenger
    auto last = NewMessenger([&](VMessage*) { order += "last "; });
    Messenger fickle;
    fickle = NewMessenger([&](VMessage*) {
        order += "fickle ";
        source->RemoveConnection(0, fickle.Get(), 0, nullptr);
        source->RemoveConnection(0, last.Get(), 0, nullptr);
        source->AddConnection(0, last.Get(), 1, nullptr);
        fickle.Exchange(nullptr); // its last reference but the sender's
        alive = ATestMessenger::ms_alive;
    });
    source->AddConnection(0, fickle.Get(), 0, nullptr);
    EXPECT_EQ(source->Send(0), 1); // alone
    EXPECT_EQ(alive, 3);
    EXPECT_EQ(source->Send(0), 1);
    EXPECT_EQ(order, "fickle last ");
    EXPECT_EQ(ATestMessenger::ms_alive, 2);

    fickle = NewMessenger([&](VMessage*) { source->RemoveConnection(0, last.Get(), 1, nullptr); });
    source->RemoveConnection(0, last.Get(), 1, nullptr);
    for (auto const& target : {fickle, last, fickle}) {
        source->AddConnection(0, target.Get(), 1, nullptr);
    }
    EXPECT_EQ(source->Send(0), 2);
    EXPECT_EQ(order, "fickle last ");
    while (source->RemoveConnection(0, fickle.Get(), 1, nullptr)) {
    }
}

long Pooled() {
    VConnectionTuple::TheClass();
    return VConnectionTuple::ms_recycledConnections.load()->UsedCount();
}

TEST(VConnectionTuplePool, TakesBackWhatItHandedOut) {
    long const pooled = Pooled();
    EXPECT_EQ(pooled, VConnectionTuple::kPoolCapacity);
    auto const source = NewMessenger();
    source->AddConnection(0, source.Get(), 0, nullptr);
    EXPECT_EQ(Pooled(), pooled - 1);
    EXPECT_EQ(source->RetainCount(), 3);
    source->RemoveConnection(0, source.Get(), 0, nullptr);
    EXPECT_EQ(Pooled(), pooled);
    EXPECT_EQ(source->RetainCount(), 1);

    { // two references to a tuple that is not on the list look the same from outside
        auto const foreign = Tuple::Adopt(VConnectionTuple::New());
        foreign->Retain();
        foreign->Release();
        EXPECT_EQ(Pooled(), pooled);
    }
    { // with recycling off a tuple stays away, but lets go of its messengers
        auto const tuple = Tuple::Adopt(VConnectionTuple::NewConnectionTuple());
        tuple->Set(source.Get(), 0, source.Get(), 0, nullptr);
        VConnectionTuple::ms_bRecyclingEnabled = false;
    }
    EXPECT_EQ(source->RetainCount(), 1);
    EXPECT_EQ(Pooled(), pooled - 1);

    VConnectionTuple::ms_bRecyclingEnabled = true;
    auto const survivor = Tuple::Adopt(VConnectionTuple::NewConnectionTuple());
    survivor->Set(source.Get(), 0, source.Get(), 1, nullptr);
    VConnectionTuple::UninitializeClass();
    VConnectionTuple::UninitializeClass();
    EXPECT_EQ(VConnectionTuple::ms_allConnections, nullptr);
    VConnectionTuple::ms_bRecyclingEnabled = true;
    VConnectionTuple::InitializeClass();
    VConnectionTuple::InitializeClass(); // keeps the pool
    { Tuple const again(survivor); }     // as many references as a tuple has that is about to be pooled
    EXPECT_EQ(Pooled(), VConnectionTuple::kPoolCapacity);
    EXPECT_TRUE(survivor->Matches(source.Get(), 0, source.Get(), 1)) << "it is none of the next pool's";
}

TEST(VConnectionTuplePool, LosesNothingWhenTwoThreadsReleaseATuple) {
    long const pooled = Pooled();
    for (int round = 0; round < 300; ++round) {
        auto* const tuple = VConnectionTuple::NewConnectionTuple();
        tuple->Retain();
        std::thread other([=] { tuple->Release(); });
        tuple->Release();
        other.join();
    }
    EXPECT_EQ(Pooled(), pooled);
}

} // namespace
