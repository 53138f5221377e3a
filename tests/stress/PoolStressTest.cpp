#include "foundation/containers/VObjectArray.h"
#include "foundation/strings/VString.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <thread>

namespace {

using namespace VFoundation;
using testing_support::OnThreads;

class PoolStress : public testing::TestWithParam<bool> {
  protected:
    PoolStress() {
        VString::TheClass();
        VObjectArray::TheClass();
        SetRecycling(GetParam());
    }
    ~PoolStress() override { SetRecycling(true); }

    static void SetRecycling(bool on) {
        VString::ms_bRecyclingEnabled = on;
        VObjectArray::SetRecyclingEnabled(on);
    }
};

// Each thread fills what it was given with something of its own, and finds it so a moment later.
TEST_P(PoolStress, HandsNoObjectOutTwice) {
    OnThreads(4, [](int t) {
        std::array<VObjectRef<VObjectArray>, 8> arrays;
        for (int round = 0; round < 400; ++round) {
            char text[32];
            VString::snprintf(text, sizeof text, "%i-%i", t, round);
            for (auto& array : arrays) {
                array = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
                array->AddObject(VObjectRef<VString>::Adopt(VString::NewString(text)).Get());
            }
            for (auto const& array : arrays) {
                ASSERT_EQ(array->RetainCount() + array->ObjectAtIndex(0)->RetainCount(), 2);
                ASSERT_STREQ(static_cast<VString const*>(array->ObjectAtIndex(0))->CString(), text);
            }
        }
    });
}

// The last reference is dropped by whichever thread comes last; what the others did before must be over.
TEST_P(PoolStress, TakesObjectsBackFromAnyThread) {
    for (int round = 0; round < 100; ++round) {
        auto* const array = VObjectArray::NewObjectArray();
        auto* const string = VString::New();
        for (int i = 1; i < 4; ++i) {
            array->Retain();
            string->Retain();
        }
        OnThreads(4, [=](int) {
            EXPECT_EQ(array->Count() + static_cast<long>(string->Length()), 0);
            array->Release();
            string->Release();
        });
        VString::NewString("again")->Release();
    }
}

// A thread that has had its magazine to itself for a while enters it without a locked operation, until another thread
// finds nothing elsewhere and takes from it.
TEST_P(PoolStress, FindsWhatAThreadKeepsForItself) {
    VObjectArray::ReleaseRecycledArrays();
    VObjectArray::InitializeClass(); // with nothing in the ring, which would be used first
    auto const element = VObjectRef<VObject>::Adopt(VString::TheClass()->NewInstance());
    auto const takeAndPutBack = [&] {
        auto const array = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
        ASSERT_EQ(array->Count(), 0);
        array->AddObject(element.Get());
        ASSERT_EQ(array->Count(), 1);
        ASSERT_EQ(array->RetainCount(), 1);
    };
    for (int round = 0; round < 40; ++round) {
        for (int i = 0; i < 1000; ++i) {
            takeAndPutBack();
        }
        std::atomic<bool> isOver{false};
        std::thread other([&] {
            takeAndPutBack();
            isOver = true;
        });
        while (!isOver) {
            takeAndPutBack();
        }
        other.join();
    }
}

INSTANTIATE_TEST_SUITE_P(Recycling, PoolStress, testing::Bool());

} // namespace
