#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/containers/VDictionary.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/core/VException.h"
#include "foundation/core/VMemoryProfiler.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/host/VFileInfo.h"
#include "foundation/host/VFileManager.h"
#include "foundation/log/VLog.h"
#include "foundation/messaging/VConnectionTuple.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <functional>
#include <malloc.h>
#include <memory>
#include <string>

namespace {

using namespace VFoundation;

std::string CaptureShutDown(bool destroyRegistry, bool dumpClasses, bool quiet) {
    testing::internal::CaptureStderr();
    UninitializeLibrary(destroyRegistry, dumpClasses, quiet);
    return testing::internal::GetCapturedStderr();
}

TEST(VLibrary, AnInnerShutDownLeavesItsContextOpen) {
    InitializeLibrary(false);
    InitializeLibrary(false);
    EXPECT_EQ(CaptureShutDown(true, false, false), "[ VFoundation::UninitializeLibrary - START ]\n");
    EXPECT_EQ(VLog::GetDefaultLog()->GetIndentLevel(), 1);
    EXPECT_TRUE(IsLibraryInitialized());
    EXPECT_NE(VString::ms_recycledStrings, nullptr) << "only the outer ends work";
    std::string const outer = CaptureShutDown(true, false, false);
    EXPECT_FALSE(IsLibraryInitialized());
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
    VClass* const string = VString::TheClass();
    UninitializeLibrary(false, false, true);
    EXPECT_EQ(VString::TheClass(), string);
    EXPECT_EQ(VString::ms_recycledStrings, nullptr);
    EXPECT_FALSE(VString::ms_bRecyclingEnabled);
    EXPECT_STREQ(VXMLFile().GetErrorStr(), "XML lib disabled");

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
    UninitializeLibrary(true, false, true);
    EXPECT_FALSE(IsLibraryInitialized());
}

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

void SetLog(VLog* adopted) {
    VLog::SetLog(VObjectRef<VLog>::Adopt(adopted).Get());
}

struct AFailingProfiler : VMemoryProfiler {
    void Release() const override {
        VMemoryProfiler::Release();
        throw 7;
    }
};

/// A default log with an open context whose end line throws.
void SetLogThatFailsAtItsEnd() {
    SetLog(new AFailingLog("open - END", false));
    VLog::StartLoggingContext("open");
}

/// Sets such a log late, so that the very last step releases it.
struct ALoggingProfiler : VMemoryProfiler {
    void DeleteInstance() const override {
        VLog::SetSafeStartup();
        SetLogThatFailsAtItsEnd();
        VMemoryProfiler::DeleteInstance();
    }
};

void SetProfiler(VMemoryProfiler* adopted) {
    VMemoryProfiler::ms_theProfiler.exchange(adopted)->Release();
}

TEST(VLibrary, AnExceptionEndsTheShutDownWithItsStage) {
    struct {
        int stage; // -1: the library's own exception, which is passed on
        std::function<void()> prepare;
        bool isUp, isCounted;
    } const rows[] = {{0, [] { SetLog(new AFailingLog("UninitializeLibrary - START", false)); }, true, false},
                      {-1, [] { SetLog(new AFailingLog("Killing recycled", true)); }, true, true},
                      {2, [] { SetLog(new AFailingLog("Killing recycled", false)); }, true, true},
                      {3, SetLogThatFailsAtItsEnd, true, true},
                      {8, [] { SetProfiler(new AFailingProfiler); }, true, true},
                      {10, [] { SetProfiler(new ALoggingProfiler); }, false, false}};
    for (auto const& [stage, prepare, isUp, isCounted] : rows) {
        SCOPED_TRACE(stage);
        InitializeLibrary(false);
        prepare();
        std::string const expected =
            "Unknown exception in UninitializeLibrary, stage:" + std::to_string(stage);
        try {
            UninitializeLibrary(true, false, stage != 0);
            ADD_FAILURE() << "nothing was thrown";
        } catch (VException const& exception) {
            EXPECT_EQ(exception.DescriptionText().CString(), stage < 0 ? "log" : expected);
            EXPECT_EQ(exception.Id(), stage < 0 ? 6 : 0);
            EXPECT_EQ(exception.Stage(), stage < 0 ? 2 : -1);
        }
        EXPECT_EQ(IsLibraryInitialized(), isUp); // the remaining steps did not run
        if (!isUp) {
            continue;
        }
        if (stage < 3) {
            VLog::SetLog(nullptr);
        }
        UninitializeLibrary(true, false, true);
        EXPECT_FALSE(IsLibraryInitialized());
        if (isCounted) {
            InitializeLibrary(false);
            InitializeLibrary(false);
            UninitializeLibrary(true, false, true);
        }
    }
}

TEST(VLibrary, SwitchesOnAgainWhatItSwitchedOff) {
    for (int life = 0; life < 2; ++life) {
        InitializeLibrary(false);
        EXPECT_EQ(VDictionary::TheClass()->Version(), 2);
        VConnectionTuple::NewConnectionTuple()->Release();
        EXPECT_TRUE(VConnectionTuple::ms_bRecyclingEnabled);
        EXPECT_NE(VConnectionTuple::ms_recycledConnections, nullptr);
        UninitializeLibrary(true, false, true);
    }
}

TEST(VLibrary, MakesNoLogOnceItIsShutDown) {
    InitializeLibrary(false);
    VLog::Trace("makes the default log\n");
    UninitializeLibrary(true, false, true);
    VLog::Trace("only echoed\n");
    EXPECT_EQ(VLog::GetDefaultLog(), nullptr);
    EXPECT_EQ(VLog::ms_theClass, nullptr);
}

TEST(VLibrary, ManyCyclesDoNotGrowTheHeap) {
    auto const cycles = testing_support::Lives(250);
    std::size_t afterHalf = 0; // by then the allocator's own caches have their size
    for (int cycle = 1; cycle <= cycles; ++cycle) {
        InitializeLibrary(false);
        VString::NewString("pooled")->Release();
        VObjectArray::NewObjectArray()->Release();
        VFileManager::DefaultManager();
        VClass::ClassForClassName("VString");
        UninitializeLibrary(cycle % 4 != 0, false, true);
        if (cycle == cycles / 2) {
            afterHalf = mallinfo2().uordblks;
        }
    }
    InitializeLibrary(false);
    UninitializeLibrary(true, false, true);
    EXPECT_LE(mallinfo2().uordblks, afterHalf + 8 * 1024)
        << "bytes in use after half the cycles: " << afterHalf;
}

TEST(LibraryScope, StartsAndEndsTheLibrary) {
    {
        LibraryScope library;
        EXPECT_TRUE(IsLibraryInitialized());
        LibraryScope const inner;
    }
    EXPECT_FALSE(IsLibraryInitialized());
    struct Throwing : VLog {
        ~Throwing() override = default;
        void AddString(char const*) override { throw 7; }
    };
    for (bool const byHand : {true, false}) {
        std::unique_ptr<LibraryScope> library = std::make_unique<LibraryScope>();
        VLog::SetLog(MakeObject<Throwing>().Get());
        if (byHand) {
            EXPECT_THROW(library->End(), VException);
        }
        library.reset(); // quietly
        VLog::SetLog(nullptr);
        if (IsLibraryInitialized()) { // the end that threw was counted
            InitializeLibrary(false);
            UninitializeLibrary(true, false, true);
        }
        EXPECT_FALSE(IsLibraryInitialized());
    }
}

} // namespace
