#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <barrier>
#include <deque>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace VFoundation;

class ABannerString : public Registered<ABannerString, VString> {
  public:
    static constexpr char const* kClassName = "ABannerString";
    static inline VClass* ms_theClass = nullptr;
    ABannerString() : Registered(nullptr, "banner") {}
    static ABannerString* New() { return new ABannerString; }
};

class APlainDerivedString : public VString {}; // no record of its own

class VStringPool : public testing::Test {
  protected:
    void SetUp() override {
        VString::TheClass();
        VString::UninitializeClass();
        VString::InitializeClass();
    }
    void TearDown() override {
        VString::ms_bRecyclingEnabled = true;
        VString::UninitializeClass();
    }
    static long Existing() { return VString::TheClass()->Existing(); }
};

TEST_F(VStringPool, AReleasedStringComesBackEmpty) {
    VString* const string = VString::NewString(std::string(1000, 'x').c_str());
    unsigned long const capacity = string->Capacity();
    string->Release();
    auto const again = VObjectRef<VString>::Adopt(VString::New());
    EXPECT_EQ(again.Get(), string);
    EXPECT_EQ(VString::GetRecycledStringsCount(), 0);
    EXPECT_EQ(again->RetainCount(), 1);
    EXPECT_STREQ(again->CString(), "");
    EXPECT_EQ(again->Length(), 0U);
    EXPECT_EQ(again->Capacity(), capacity);
}

TEST_F(VStringPool, AFullPoolLetsStringsDie) {
    long const existing = Existing();
    auto const capacity = static_cast<long>(VString::kPoolCapacity);
    {
        std::vector<VObjectRef<VString>> strings(VString::kPoolCapacity + 1);
        for (auto& string : strings) {
            string = VObjectRef<VString>::Adopt(VString::New());
        }
    }
    EXPECT_EQ(VString::GetRecycledStringsCount(), capacity);
    EXPECT_EQ(Existing(), existing + capacity);
    VString::ReleaseAllRecycledStrings();
    EXPECT_EQ(VString::GetRecycledStringsCount(), 0);
    EXPECT_EQ(Existing(), existing) << "emptying the pool frees what was in it";
}

/// Over more strings than a thread keeps at hand.
TEST_F(VStringPool, IsFirstInFirstOutForOneThread) {
    std::mt19937 random(3);
    std::deque<VString*> pooled;
    std::vector<VString*> held;
    for (int i = 0; i < 20'000; ++i) {
        bool const takes = random() % 100 < (i / 500 % 2 ? 40U : 60U);
        if (takes || held.empty()) {
            held.push_back(VString::New());
            if (!pooled.empty()) {
                ASSERT_EQ(held.back(), pooled.front()) << i;
                pooled.pop_front();
            }
        } else {
            pooled.push_back(held.back());
            held.back()->Release();
            held.pop_back();
        }
        ASSERT_EQ(VString::GetRecycledStringsCount(), static_cast<long>(pooled.size()));
    }
    for (VString* const string : held) {
        string->Release();
    }
}

TEST_F(VStringPool, ThreadsShareWhatIsInIt) {
    constexpr long kEach = 4000;
    long const existing = Existing();
    std::barrier madeAll(4);
    testing_support::OnThreads(4, [&](int) {
        std::vector<VObjectRef<VString>> strings(kEach);
        for (auto& string : strings) {
            string = VObjectRef<VString>::Adopt(VString::New());
        }
        madeAll.arrive_and_wait();
    });
    auto const capacity = static_cast<long>(VString::kPoolCapacity);
    EXPECT_EQ(VString::GetRecycledStringsCount(), capacity);
    EXPECT_EQ(Existing(), existing + capacity) << "no more than the ring alone has room for";
    long const created = VString::TheClass()->Created();
    {
        std::vector<VObjectRef<VString>> strings(VString::kPoolCapacity);
        for (auto& string : strings) {
            string = VObjectRef<VString>::Adopt(VString::New());
        }
    }
    EXPECT_EQ(VString::TheClass()->Created(), created) << "also those that other threads had at hand";
}

TEST_F(VStringPool, SwitchedOffOrGoneStringsDie) {
    VString::New()->Release();
    VString::ms_bRecyclingEnabled = false;
    VString::New()->Release();
    EXPECT_EQ(VString::GetRecycledStringsCount(), 1) << "nothing is taken out or put back";
    VString::ms_bRecyclingEnabled = true;
    VString::UninitializeClass();
    VString::UninitializeClass();
    long const existing = Existing();
    VString::New()->Release();
    EXPECT_EQ(Existing(), existing);
}

TEST_F(VStringPool, DerivedStringsAreNotPooled) {
    auto const banner = VObjectRef<ABannerString>::Adopt(ABannerString::New());
    EXPECT_FALSE(banner->IsEqual(VString("banner"))) << "another class";
    ABannerString::New()->Release();
    (new APlainDerivedString)->Release();
    EXPECT_EQ(ABannerString::TheClass()->Existing(), 1);
    EXPECT_EQ(VString::GetRecycledStringsCount(), 0);
}

TEST_F(VStringPool, TheEmptyStringIsSharedUntilTheClassEnds) {
    long const existing = Existing();
    EXPECT_EQ(VString::EmptyString(), VString::EmptyString());
    EXPECT_EQ(Existing(), existing + 1);
    VString::UninitializeClass();
    EXPECT_EQ(Existing(), existing);
}

} // namespace
