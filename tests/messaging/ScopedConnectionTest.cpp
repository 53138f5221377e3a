#include "foundation/messaging/ScopedConnection.h"
#include "foundation/messaging/StartedCenter.h"
#include "foundation/messaging/VNotification.h"
#include "foundation/messaging/VNotificationCenter.h"
#include "tests/messaging/TestMessenger.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cfenv>
#include <memory>
#include <semaphore>
#include <vector>

namespace {

using namespace VFoundation;
using namespace testing_support;

class ScopedConnectionTest : public testing::Test {
  protected:
    void Post(char const* name) {
        auto const news = MakeObject<VNotification>();
        news->SetName(VString(name));
        m_center->PostNotification(news.Get());
    }
    VObjectRef<VNotificationCenter> const m_center = MakeObject<VNotificationCenter>();
};

TEST_F(ScopedConnectionTest, ObservesUntilItGoes) {
    std::string heard;
    auto const captured = std::make_shared<int>();
    auto const hear = [&heard, captured](VNotification& news) { heard += news.Name().CString(); };
    {
        auto any = m_center->Observe(nullptr, nullptr, hear);
        auto const a = m_center->Observe("a", nullptr, hear);
        ASSERT_TRUE(any.IsConnected());
        Post("a");
        Post("b");
        EXPECT_EQ(heard, "aab");
        ScopedConnection moved = std::move(any);
        EXPECT_FALSE(any.IsConnected()); // NOLINT(bugprone-use-after-move): a moved-from connection is empty
        moved = m_center->Observe("b", nullptr, hear);
        Post("a");
        EXPECT_EQ(heard, "aaba");
        Post("b");
        moved.Disconnect();
        moved.Disconnect();
    }
    Post("a");
    EXPECT_EQ(heard, "aabab");
    EXPECT_EQ(captured.use_count(), 2); // this function's and the lambda's
    EXPECT_EQ(m_center->RetainCount(), 1);
    EXPECT_FALSE(m_center->Observe("a", nullptr, {}));
}

TEST_F(ScopedConnectionTest, WaitsForACallOnAnotherThreadButNotForItsOwn) {
    std::binary_semaphore isRunning(0);
    std::atomic<int> finished{0};
    auto connection = m_center->Observe(nullptr, nullptr, [&](VNotification&) {
        isRunning.release();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        ++finished;
    });
    std::thread poster([this] { Post("a"); });
    isRunning.acquire();
    connection.DisconnectAndWait();
    EXPECT_EQ(finished, 1);
    poster.join();

    ScopedConnection own;
    own = m_center->Observe(nullptr, nullptr, [&](VNotification&) {
        own.DisconnectAndWait();
        Post("b");
        ++finished;
        throw 1;
    });
    EXPECT_THROW(Post("a"), int);
    Post("c");
    EXPECT_EQ(finished, 2);
}

TEST_F(ScopedConnectionTest, ConnectsMessengersAndFunctions) {
    auto const source = NewMessenger();
    auto const target = NewMessenger();
    int calls = 0;
    auto const count = [&calls](VMessage const&) { ++calls; };
    {
        auto const toTarget = VMessageCenter::Connect(nullptr, source.Get(), 1, target.Get(), 2);
        auto const toFunction = VMessageCenter::Connect(nullptr, source.Get(), 1, count);
        EXPECT_EQ(source->Send(1), 2);
        EXPECT_EQ(target->TakeNotes(), "i2 m2 ");
        EXPECT_EQ(calls, 1);
        EXPECT_FALSE(VMessageCenter::Connect(nullptr, source.Get(), 3, count));
        EXPECT_FALSE(VMessageCenter::Connect(nullptr, source.Get(), 1, target.Get(), 3));
        EXPECT_FALSE(VMessageCenter::Connect(nullptr, nullptr, 0, count));
    }
    EXPECT_EQ(source->Send(1), 0);
    EXPECT_EQ(source->RetainCount() + target->RetainCount(), 2);

    auto center = NewCenter(4);
    auto connection = VMessageCenter::Connect(center.Get(), source.Get(), 0, count);
    source->Send(0);
    center->SendDelayedCommands();
    EXPECT_EQ(calls, 2);
    VMessageCenter* const borrowed = center.Get();
    center = Center(); // the connection keeps it
    source->Send(0);
    EXPECT_EQ(borrowed->CommandCountMin(), 1);
    Center const kept(borrowed);
    connection.Disconnect();
    EXPECT_EQ(kept->SendDelayedCommands(), 1);
    EXPECT_EQ(calls, 2) << "posted before, delivered after the end";
    EXPECT_EQ(kept->RetainCount(), 1);
}

TEST(StartedCenter, ServicesFunctionsWithTheUsualRounding) {
    std::string const name = UniqueName();
    auto const source = NewMessenger();
    std::atomic<int> rounding{-1};
    std::atomic<int> scoped{-1};
    {
        StartedCenter const center(name.c_str());
        auto const connection = VMessageCenter::Connect(
            center.Get(), source.Get(), 0, [&](VMessage const&) { rounding = std::fegetround(); });
        auto const target = NewMessenger([&](VMessage*) {
            UsualRounding const usual;
            scoped = std::fegetround();
        });
        auto const other = VMessageCenter::Connect(center.Get(), source.Get(), 0, target.Get(), 0);
        source->Send(0);
        WaitUntil([&] { return rounding >= 0 && scoped >= 0; });
    }
    EXPECT_EQ(rounding, FE_TONEAREST);
    EXPECT_EQ(scoped, FE_TONEAREST);
    EXPECT_EQ(source->RetainCount(), 1);
    sem_unlink(name.c_str());
}

TEST(StartedCenter, DeliversBeforeItStops) {
    std::vector<int> received;
    auto const receiver = VMessageCenter::MakeReceiver(
        [&](VMessage const& message) { received.push_back(message.MessageID()); });
    EXPECT_FALSE(VMessageCenter::MakeReceiver({}));
    StartedCenter center(100);
    VMessage message;
    for (int id = 0; id < 100; ++id) {
        message.SetMessageID(id);
        EXPECT_TRUE(center->MessageDelay(receiver.Get(), &message));
    }
    center->FinishCenter();
    ASSERT_EQ(received.size(), 100);
    EXPECT_TRUE(std::is_sorted(received.begin(), received.end()));
    EXPECT_FALSE(center->MessageDelay(receiver.Get(), &message));
    EXPECT_EQ(center->DroppedCommands(), 0);

    auto const thrower = VMessageCenter::MakeReceiver([](VMessage const&) { throw 1; });
    auto const byHand = MakeObject<VMessageCenter>(2);
    EXPECT_TRUE(byHand->MessageDelay(thrower.Get(), &message));
    EXPECT_TRUE(byHand->MessageDelay(receiver.Get(), &message));
    EXPECT_THROW(byHand->FinishCenter(), int);
    EXPECT_FALSE(byHand->IsAccepting());
    EXPECT_EQ(byHand->DroppedCommands(), 1);
}

} // namespace
