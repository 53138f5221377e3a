#include "foundation/messaging/VNotificationCenter.h"
#include "foundation/messaging/VNotification.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <functional>
#include <thread>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

class AnObserver : public ACounted {
  public:
    std::string m_heard;
    std::function<void()> m_action;

    static void Hear(VObject* observer, VNotification* notification) {
        auto* const self = static_cast<AnObserver*>(observer);
        self->m_heard += notification->Name().CString();
        if (self->m_action) {
            self->m_action();
        }
    }
};

class VNotificationCenterTest : public testing::Test {
  protected:
    VObjectRef<VNotificationCenter> m_center =
        VObjectRef<VNotificationCenter>::Adopt(VNotificationCenter::New());
    AnObserver m_one;
    AnObserver m_two;
    VObjectRef<VNotification> m_news = VObjectRef<VNotification>::Adopt(VNotification::New());

    void Post(char const* name, VObject* about = nullptr) {
        m_news->SetName(VString(name));
        m_news->SetObject(about);
        m_center->PostNotification(m_news.Get());
    }
    bool Observe(AnObserver& observer, char const* name = nullptr, VObject* about = nullptr) {
        VString const text(name);
        return m_center->AddObserver(&observer, &AnObserver::Hear, name ? &text : nullptr, about);
    }
};

TEST_F(VNotificationCenterTest, ReachThoseWhoAskedForNameAndObject) {
    struct Case {
        char const* name;
        VObject* about;
        char const* heard;
    };
    for (Case const& c :
         {Case{nullptr, nullptr, "aabb"}, Case{"a", nullptr, "aa"}, Case{nullptr, &m_one, "ab"},
          Case{"b", &m_one, "b"}, Case{"B", nullptr, ""}, Case{"", nullptr, ""}, Case{"a", &m_two, ""}}) {
        EXPECT_TRUE(Observe(m_two, c.name, c.about));
        Post("a");
        Post("a", &m_one);
        Post("b", &m_one);
        Post("b");
        EXPECT_EQ(std::exchange(m_two.m_heard, {}), c.heard);
        m_center->RemoveObserver(&m_two);
    }
    Post("a");
    EXPECT_EQ(m_two.m_heard, "");
    EXPECT_FALSE(m_center->AddObserver(nullptr, &AnObserver::Hear, nullptr, nullptr));
    EXPECT_FALSE(m_center->AddObserver(&m_one, nullptr, nullptr, nullptr));
    m_center->PostNotification(nullptr);
    EXPECT_EQ(m_one.RetainCount(), 1);
}

TEST_F(VNotificationCenterTest, LetObserversComeAndGoMeanwhile) {
    std::string order;
    Observe(m_one);
    Observe(m_two);
    Observe(m_one);
    m_one.m_action = [&] { order += '1'; };
    m_two.m_action = [&] {
        order += '2';
        m_center->RemoveObserver(&m_one);
        m_center->RemoveObserver(&m_two);
        Observe(m_two);
    };
    Post("x");
    EXPECT_EQ(order, "12"); // in order, and neither the removed third nor the new one
    Post("x");
    EXPECT_EQ(order, "122");

    long const existing = VNotification::TheClass()->Existing();
    long living = 0;
    m_center->RemoveObserver(&m_two);
    Observe(m_one);
    Observe(m_two);
    m_one.m_action = [&] { m_news = VObjectRef<VNotification>::Adopt(VNotification::New()); };
    m_two.m_action = [&] { living = VNotification::TheClass()->Existing(); };
    Post("x");
    EXPECT_EQ(living, existing + 1) << "the posting keeps what the first observer lets go";

    m_center->RemoveObserver(&m_one);
    m_two.m_action = [&] { m_center.Exchange(nullptr); }; // even the centre may go
    auto* const center = m_center.Get();
    center->PostNotification(m_news.Get());
    EXPECT_FALSE(m_center);
}

TEST_F(VNotificationCenterTest, MayBePostedAndObservedByManyThreads) {
    std::atomic<int> heard{0};
    m_two.m_action = [&] { ++heard; };
    std::thread poster([&] {
        for (int i = 0; i < 2000; ++i) {
            m_center->PostNotification(m_news.Get());
        }
    });
    for (int i = 0; i < 2000; ++i) {
        Observe(m_two);
        m_center->RemoveObserver(&m_two);
    }
    Observe(m_two);
    poster.join();
    Post("x");
    EXPECT_GE(heard, 1);
}

TEST(VNotificationCenter, HasADefaultUntilTheLibraryEnds) {
    auto* const center = VNotificationCenter::DefaultCenter();
    EXPECT_EQ(VNotificationCenter::DefaultCenter(), center);
    VNotificationCenter::UninitializeClass();
    EXPECT_EQ(VNotificationCenter::ms_defaultNotificationCenter, nullptr);
}

} // namespace
