// Lets the Nth allocation of a piece of work fail, for every N, and asks that nothing is lost but that work.
// The linker routes the C allocator of this program through the __wrap functions below.

#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/image/VImage.h"
#include "foundation/image/VImageIOTarga.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"
#include "tests/support/ScratchFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <new>

namespace {

long s_countdown = 0; // 0: nothing fails
bool s_failed = false;

bool MustFail() {
    if (s_countdown > 0 && --s_countdown == 0) {
        s_failed = true;
        return true;
    }
    return false;
}

} // namespace

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
void* __real_aligned_alloc(std::size_t alignment, std::size_t size);

void* __wrap_malloc(std::size_t size) {
    return MustFail() ? nullptr : __real_malloc(size);
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
    return MustFail() ? nullptr : __real_calloc(count, size);
}
void* __wrap_realloc(void* block, std::size_t size) {
    return MustFail() ? nullptr : __real_realloc(block, size);
}
void* __wrap_aligned_alloc(std::size_t alignment, std::size_t size) {
    return MustFail() ? nullptr : __real_aligned_alloc(alignment, size);
}
}

[[gnu::noinline]] void* operator new(std::size_t size) {
    void* const block = MustFail() ? nullptr : __real_malloc(size ? size : 1);
    if (!block) {
        throw std::bad_alloc();
    }
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept {
    std::free(block);
}
[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    std::free(block);
}

namespace {

using namespace VFoundation;
using testing_support::ACounted;

/// Runs `work` with the 1st, 2nd, ... allocation failing until one run needs no more of them.
void FailEachAllocation(std::function<void()> const& work) {
    long n = 1;
    do {
        ASSERT_LT(n, 10000) << "never ends";
        s_failed = false;
        s_countdown = n++;
        try {
            work();
        } catch (VException const& exception) {
            EXPECT_EQ(exception.Id(), VException::eOutOfMemory);
        } catch (std::bad_alloc const&) { // an object could not be made
        }
        s_countdown = 0;
    } while (s_failed);
    EXPECT_GT(n, 2) << "nothing was allocated";
}

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

TEST_P(AllocationFailure, StringsStayUsable) {
    VString survivor;
    FailEachAllocation([&survivor] {
        survivor = "short";
        for (int i = 0; i < 100; ++i) {
            survivor << "0123456789" << i;
        }
        survivor.AppendPathComponent("component");
        survivor.Set("a longer text than before, to be cut", 300);
        VString copy(survivor);
        copy.Format("%0500i", 7);
        copy << copy.CString();
        auto const made = VObjectRef<VString>::Adopt(VString::NewString(copy.CString()));
        made->DeleteLastPathComponent();
        EXPECT_LE(made->Length(), made->Capacity());
        EXPECT_EQ(made->GetCharAtIndex(made->Length()), '\0');
    });
    survivor = "still works";
    EXPECT_STREQ(survivor.CString(), "still works");
}

TEST_P(AllocationFailure, BuffersKeepTheirContents) {
    VData data(16);
    data.Bytes()[3] = 7;
    FailEachAllocation([&data] {
        unsigned long const before = data.Length();
        try {
            data.SetLength(before + 100, true);
        } catch (VException const&) {
            EXPECT_EQ(data.Length(), before);
            throw;
        }
        auto const copy = VObjectRef<VObject>::Adopt(data.Copy());
        EXPECT_TRUE(copy->IsEqual(data));
    });
    EXPECT_EQ(data.Bytes()[3], 7);
}

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
