#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/strings/VString.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
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
    string->Retain();
    string->Release();
    EXPECT_EQ(VString::GetRecycledStringsCount(), 0) << "someone still holds it";
    string->Release();
    EXPECT_EQ(VString::GetRecycledStringsCount(), 1);

    VString* const again = VString::New();
    EXPECT_EQ(again, string);
    EXPECT_EQ(VString::GetRecycledStringsCount(), 0);
    EXPECT_EQ(again->RetainCount(), 1);
    EXPECT_TRUE(again->IsEmpty());
    EXPECT_STREQ(again->CString(), "");
    EXPECT_EQ(again->Capacity(), capacity);
    again->Release();
    long const existing = Existing();
    VString::ReleaseAllRecycledStrings();
    EXPECT_EQ(VString::GetRecycledStringsCount(), 0);
    EXPECT_EQ(Existing(), existing - 1) << "emptying the pool frees what was in it";
}

TEST_F(VStringPool, AFullPoolLetsStringsDie) {
    std::vector<VString*> strings;
    for (unsigned long i = 0; i < VString::kPoolCapacity + 1; ++i) {
        strings.push_back(VString::New());
    }
    long const existing = Existing();
    for (VString* const string : strings) {
        string->Release();
    }
    EXPECT_EQ(VString::GetRecycledStringsCount(), static_cast<long>(VString::kPoolCapacity));
    EXPECT_EQ(Existing(), existing - 1);
}

TEST_F(VStringPool, SwitchedOffOrGoneStringsDie) {
    VString::New()->Release();
    VString::ms_bRecyclingEnabled = false;
    VString* const fresh = VString::New();
    EXPECT_EQ(VString::GetRecycledStringsCount(), 1) << "nothing is taken out either";
    fresh->Release();
    EXPECT_EQ(VString::GetRecycledStringsCount(), 1);
    VString::ms_bRecyclingEnabled = true;
    VString::UninitializeClass();
    VString::UninitializeClass();
    long const existing = Existing();
    VString::New()->Release();
    EXPECT_EQ(Existing(), existing);
    EXPECT_EQ(VString::GetRecycledStringsCount(), 0);
}

TEST_F(VStringPool, DerivedStringsAreNotPooled) {
    long const existing = ABannerString::TheClass()->Existing();
    ABannerString* const banner = ABannerString::New();
    EXPECT_STREQ(banner->CString(), "banner");
    EXPECT_FALSE(banner->IsEqual(VString("banner"))) << "another class";
    banner->Release();
    (new APlainDerivedString)->Release();
    EXPECT_EQ(ABannerString::TheClass()->Existing(), existing);
    EXPECT_EQ(VString::GetRecycledStringsCount(), 0);
}

TEST_F(VStringPool, TheEmptyStringIsSharedUntilTheClassEnds) {
    VString* const empty = VString::EmptyString();
    EXPECT_EQ(VString::EmptyString(), empty);
    EXPECT_TRUE(empty->IsEmpty());
    EXPECT_EQ(empty->RetainCount(), 1);
    long const existing = Existing();
    VString::UninitializeClass();
    EXPECT_EQ(Existing(), existing - 1);
}

TEST_F(VStringPool, NoStringIsHandedOutTwice) {
    auto const work = [](int id) {
        std::string const mine = "thread " + std::to_string(id);
        for (int i = 0; i < 3000; ++i) {
            auto const a = VObjectRef<VString>::Adopt(VString::NewString(mine.c_str()));
            auto const b = VObjectRef<VString>::Adopt(VString::NewString("second"));
            *a << i;
            if (a.Get() == b.Get() || a->CString() != mine + std::to_string(i) || *b != "second") {
                ADD_FAILURE() << "shared with another owner: " << a->CString();
                return;
            }
            if (id == 0 && i % 100 == 0) {
                VString::ms_bRecyclingEnabled = i % 200 == 0;
            }
        }
    };
    std::vector<std::thread> threads;
    for (int id = 0; id < 4; ++id) {
        threads.emplace_back(work, id);
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    long const existing = Existing();
    long const pooled = VString::GetRecycledStringsCount();
    VString::ReleaseAllRecycledStrings();
    EXPECT_EQ(VString::GetRecycledStringsCount(), 0);
    EXPECT_EQ(Existing(), existing - pooled);
}

} // namespace
