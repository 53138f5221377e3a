#include "foundation/containers/VObjectArray.h"
#include "foundation/core/VException.h"
#include "foundation/core/VMemoryProfiler.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/host/VFileInfo.h"
#include "foundation/host/VFileManager.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <string>
#include <thread>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

std::string CaptureShutDown(bool destroyRegistry, bool dumpClasses, bool quiet) {
    testing::internal::CaptureStderr();
    UninitializeLibrary(destroyRegistry, dumpClasses, quiet);
    return testing::internal::GetCapturedStderr();
}

TEST(VLibrary, NestedPairsWorkOnlyAtTheOuterEnds) {
    InitializeLibrary(false);
    InitializeLibrary(true);
    EXPECT_EQ(CaptureShutDown(true, true, true), "");
    EXPECT_TRUE(IsLibraryInitialized());
    EXPECT_NE(VString::ms_recycledStrings, nullptr);
    UninitializeLibrary(true, false, true);
    EXPECT_FALSE(IsLibraryInitialized());
    EXPECT_EQ(VString::ms_recycledStrings, nullptr);
}

TEST(VLibrary, AnInnerShutDownLeavesItsContextOpen) {
    InitializeLibrary(false);
    InitializeLibrary(false);
    EXPECT_EQ(CaptureShutDown(true, false, false), "[ VFoundation::UninitializeLibrary - START ]\n");
    EXPECT_EQ(VLog::GetDefaultLog()->GetIndentLevel(), 1);
    std::string const outer = CaptureShutDown(true, false, false);
    EXPECT_EQ(outer.rfind(" [ VFoundation::UninitializeLibrary - START ]\n", 0), 0U);
}

TEST(VLibrary, TellsWhatItShutsDown) {
    InitializeLibrary(false);
    VString::NewString("pooled")->Release();
    std::string const log = CaptureShutDown(true, true, false);
    std::size_t at = 0;
    for (char const* const expected : {"[ VFoundation::UninitializeLibrary - START ]\n",
                                       "\n String recycle pool: ", "\n Killing recycled strings...\n",
                                       "\n String recycle pool: 0\n", " classes\n", "| Num | Classname ",
                                       " Total created: ", "\n[ VFoundation::UninitializeLibrary - END ] ",
                                       "\nclass registry destroyed\n"}) {
        at = log.find(expected, at);
        ASSERT_NE(at, std::string::npos) << expected << "\nin\n" << log;
    }
}

TEST(VLibrary, KeepsTheRecordsWhenAskedTo) {
    InitializeLibrary(false);
    VClass* const object = VObject::TheClass();
    VClass* const string = VString::TheClass();
    UninitializeLibrary(false, false, true);
    EXPECT_EQ(VObject::TheClass(), object);
    EXPECT_EQ(VString::ms_recycledStrings, nullptr);
    EXPECT_FALSE(VString::ms_bRecyclingEnabled);

    InitializeLibrary(false); // sets the kept classes up again
    EXPECT_EQ(VString::TheClass(), string);
    EXPECT_NE(VString::ms_recycledStrings, nullptr);
    EXPECT_NE(VObjectArray::ms_recycledArrays, nullptr);
    EXPECT_NE(VFileInfo::ms_recycledFileInfos, nullptr);
    EXPECT_NE(VMemoryProfiler::DefaultProfiler(), nullptr);
    EXPECT_TRUE(VString::ms_bRecyclingEnabled);
    UninitializeLibrary(true, false, true);
    EXPECT_EQ(VMemoryProfiler::DefaultProfiler(), nullptr);
}

TEST(VLibrary, MayBeShutDownWithoutAStartAndStartedAfterAnyEnd) {
    UninitializeLibrary(true, true, true); // the count is -1 now
    InitializeLibrary(false);              // 0
    EXPECT_TRUE(IsLibraryInitialized());
    UninitializeLibrary(false, false, true);
    EXPECT_FALSE(IsLibraryInitialized());
    UninitializeLibrary(true, false, true);
    InitializeLibrary(false);
    InitializeLibrary(false);
    InitializeLibrary(false);
    EXPECT_TRUE(IsLibraryInitialized());
    VObjectRef<VString> const text = VObjectRef<VString>::Adopt(VString::NewString("works"));
    EXPECT_STREQ(text->CString(), "works");
    UninitializeLibrary(true, false, true);
    EXPECT_FALSE(IsLibraryInitialized());
}

class AFailing : public Registered<AFailing, VObject> {
  public:
    static constexpr char const* kClassName = "AFailing";
    static inline VClass* ms_theClass = nullptr;
    AFailing() : Registered(nullptr) {}
    ~AFailing() override = default;
    static AFailing* New() { return new AFailing; }
    void GetDescription(VString&) const override { throw 7; }
};

/// A log whose lines make the shut-down fail at a chosen text.
class AFailingLog : public VLog {
  public:
    explicit AFailingLog(char const* text, bool library) : m_text(text), m_library(library) {}
    void AddString(char const* line) override {
        if (line && std::string(line).find(m_text) != std::string::npos) {
            if (m_library) {
                throw VException(6, nullptr, "log", 2);
            }
            throw 7;
        }
    }

  private:
    char const* m_text;
    bool m_library;
};

TEST(VLibrary, AnExceptionEndsTheShutDownWithItsStage) {
    for (bool const library : {false, true}) {
        InitializeLibrary(false);
        auto* const log = new AFailingLog("Killing recycled", library);
        VLog::SetLog(log);
        log->Release();
        try {
            UninitializeLibrary(true, false, true);
            FAIL() << "nothing was thrown";
        } catch (VException const& exception) {
            EXPECT_EQ(exception.Id(), library ? 6 : 0);
            EXPECT_STREQ(exception.DescriptionText().CString(),
                         library ? "log" : "Unknown exception in UninitializeLibrary, stage:2");
            EXPECT_EQ(exception.Stage(), library ? 2 : -1);
        }
        EXPECT_TRUE(IsLibraryInitialized()); // the remaining steps did not run
        VLog::SetLog(nullptr);
        UninitializeLibrary(true, false, true);
        EXPECT_FALSE(IsLibraryInitialized());
        InitializeLibrary(false); // brings the count back to 0
        InitializeLibrary(false);
        UninitializeLibrary(true, false, true);
    }
}

TEST(VLibrary, ThousandCyclesDoNotGrowTheHeap) {
    std::size_t afterThird = 0;
    for (int cycle = 1; cycle <= 1000; ++cycle) {
        InitializeLibrary(false);
        VString::NewString("pooled")->Release();
        VObjectArray::NewObjectArray()->Release();
        VFileManager::DefaultManager();
        VClass::ClassForClassName("VString");
        UninitializeLibrary(cycle % 4 != 0, false, true);
        if (cycle == 3) {
            afterThird = mallinfo2().uordblks;
        }
    }
    InitializeLibrary(false);
    UninitializeLibrary(true, false, true);
    EXPECT_LE(mallinfo2().uordblks, afterThird + 64 * 1024)
        << "bytes in use after three cycles: " << afterThird;
}

} // namespace
