#include "foundation/containers/VObjectArray.h"
#include "foundation/strings/VString.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
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

// A thread that has had its magazine for itself for a while uses it without a locked operation, until the others find
// nothing elsewhere.
TEST_P(PoolStress, FindsWhatAThreadKeepsForItself) {
    VObject* const element = VString::TheClass()->NewInstance();
    std::atomic<bool> isOver{false};
    OnThreads(3, [&](int t) {
        for (int round = 0; t == 0 ? round < 100'000 : !isOver.load(); ++round) {
            std::array<VObjectRef<VObjectArray>, 20> arrays; // more than a magazine holds
            for (std::size_t i = 0; i < (t == 0 ? 1 : arrays.size()); ++i) {
                arrays[i] = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
                ASSERT_EQ(arrays[i]->Count(), 0);
                arrays[i]->AddObject(element);
                ASSERT_EQ(arrays[i]->RetainCount(), 1);
            }
            if (t != 0) {
                std::this_thread::sleep_for(std::chrono::microseconds(100));
            }
        }
        isOver = isOver || t == 0;
    });
    element->Release();
}

INSTANTIATE_TEST_SUITE_P(Recycling, PoolStress, testing::Bool());

} // namespace
