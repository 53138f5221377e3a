// Lets the Nth allocation of a piece of work fail, for every N, and asks that nothing is lost but that work.

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"
#include "tests/support/FailingAllocator.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using testing_support::FailEachAllocation;

class AllocationFailure : public testing::TestWithParam<bool> {
  protected:
    void SetUp() override {
        InitializeLibrary(false);
        VString::ms_bRecyclingEnabled = GetParam();
        VObjectArray::SetRecyclingEnabled(GetParam());
        ACounted::TheClass();
        VObjectRef<VString>::Adopt(VString::New()); // records and pools exist
    }
    void TearDown() override { UninitializeLibrary(true, false, true); }
};

TEST_P(AllocationFailure, ArraysHoldWhatTheyHeld) {
    auto const object = VObjectRef<ACounted>::Adopt(ACounted::New());
    FailEachAllocation([&object] {
        auto const array = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
        long added = 0;
        try {
            for (int i = 0; i < 200; ++i) {
                added += array->AddObject(object.Get()) ? 1 : 0;
            }
            added += array->InsertObjectAtIndex(object.Get(), 0) ? 1 : 0;
            auto const copy = VObjectRef<VObject>::Adopt(array->Copy());
            auto const deep = VObjectRef<VObject>::Adopt(array->DeepCopy());
        } catch (...) {
            EXPECT_EQ(array->Count(), added);
            throw;
        }
        EXPECT_EQ(array->Count(), added);
    });
    EXPECT_EQ(object->RetainCount(), 1);
    EXPECT_EQ(ACounted::ms_alive, 1);
}

TEST_P(AllocationFailure, PointerArraysAndRingsComeOrDoNotCome) {
    FailEachAllocation([] {
        VPtrArray array(false);
        int value = 0;
        long added = 0;
        for (int i = 0; i < 100; ++i) {
            added += array.AddPtr(&value) ? 1 : 0;
        }
        EXPECT_EQ(array.Count(), added);
        auto const ring = VObjectRef<VObject>::Adopt(new VObjectRingBufferTmpl<VString>(64));
    });
}

TEST_P(AllocationFailure, PicturesLoadOrAreReported) {
    testing_support::ScratchFile const scratch;
    std::string bytes(18 + 300 * 4 + 26, '\0');
    bytes[12] = bytes[14] = 10;
    bytes[16] = 32;
    scratch.SetBytes(bytes.replace(bytes.size() - 18, 16, "TRUEVISION-XFILE"));
    testing::internal::CaptureStderr();
    FailEachAllocation(
        [&scratch] { VObjectRef<VImage>::Adopt(VImageIOTarga().LoadImageFromFile(scratch.Path())); });
    std::string const errors = testing::internal::GetCapturedStderr();
    EXPECT_NE(errors.find("Caught out of memory exception whilst loading image\nFailed to load"),
              errors.npos);
    EXPECT_NE(errors.find("Caught and unknown exception whilst loading image\nFailed to load"), errors.npos);
}

INSTANTIATE_TEST_SUITE_P(Recycling, AllocationFailure, testing::Bool(),
                         [](auto const& param) { return param.param ? "On" : "Off"; });

} // namespace
