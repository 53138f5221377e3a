// Hooks of classes: who runs them, who waits, and what happens when they throw.

#include "foundation/containers/VDictionary.h"
#include "foundation/containers/VObjectArray.h"
#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/VData.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VCriticalSection.h"
#include "tests/support/Jobs.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

using namespace VFoundation;

/// A class for every number; its hook runs `ms_hook` once.
template <int Number>
class Numbered : public Registered<Numbered<Number>, VObject> {
  public:
    static inline std::string const s_name = "ANumbered" + std::to_string(Number);
    static inline char const* kClassName = s_name.c_str();
    static inline VClass* ms_theClass = nullptr;
    static inline std::function<void()> ms_hook;
    static inline std::atomic<int> ms_calls{0};
    Numbered() : Registered<Numbered, VObject>(nullptr) {}
    static Numbered* New() { return new Numbered; }
    static void InitializeClass() {
        ++ms_calls;
        if (auto const hook = std::exchange(ms_hook, nullptr)) {
            hook();
        }
    }
};

/// Waiting for it is bounded.
struct Signal {
    void Send() { m_isSent = true; }
    bool Arrives() const {
        return testing_support::WaitUntil([this] { return m_isSent.load(); });
    }
    std::atomic<bool> m_isSent{false};
};

class VClassStartTest : public testing::Test {
  protected:
    void SetUp() override { InitializeLibrary(false); }
    void TearDown() override { UninitializeLibrary(true, false, true); }
};

TEST_F(VClassStartTest, AHookMayWaitForAThreadThatUsesOtherClasses) {
    using Waiting = Numbered<0>;
    Waiting::ms_hook = [] {
        auto other = std::async(std::launch::async, [] {
            return Numbered<1>::TheClass()->IsReady() && VClass::ClassForClassName("VObject") != nullptr;
        });
        if (other.wait_for(std::chrono::seconds(20)) != std::future_status::ready) {
            std::abort(); // the future would wait forever
        }
        EXPECT_TRUE(other.get());
        EXPECT_EQ(Waiting::TheClass(), Waiting::ms_theClass); // re-entered: not ready, and no wait
        EXPECT_FALSE(Waiting::ms_theClass->IsReady());
        EXPECT_EQ(VClass::ClassForClassName("ANumbered0"), Waiting::ms_theClass);
    };
    EXPECT_TRUE(Waiting::TheClass()->IsReady());
    EXPECT_EQ(Waiting::ms_calls, 1);
}

TEST_F(VClassStartTest, OtherThreadsWaitUntilTheHookIsOver) {
    using Slow = Numbered<2>;
    Signal isInHook;
    Signal isOthersTurn;
    std::atomic<bool> isOver{false};
    Slow::ms_hook = [&] {
        isInHook.Send();
        EXPECT_TRUE(isOthersTurn.Arrives());
        std::this_thread::sleep_for(std::chrono::milliseconds(50)); // lets the other thread come to wait
        isOver = true;
    };
    auto const starter = std::async(std::launch::async, [] { Slow::TheClass(); });
    EXPECT_TRUE(isInHook.Arrives());
    isOthersTurn.Send();
    EXPECT_TRUE(Slow::TheClass()->IsReady());
    EXPECT_TRUE(isOver);
}

TEST_F(VClassStartTest, ThreadsThatWouldWaitForEachOtherGetTheClassAsItIs) {
    using First = Numbered<3>;
    using Second = Numbered<4>;
    Signal firstIsInHook;
    Signal secondIsInHook;
    First::ms_hook = [&] {
        firstIsInHook.Send();
        EXPECT_TRUE(secondIsInHook.Arrives());
        EXPECT_NE(Second::TheClass(), nullptr);
    };
    Second::ms_hook = [&] {
        secondIsInHook.Send();
        EXPECT_TRUE(firstIsInHook.Arrives());
        EXPECT_NE(First::TheClass(), nullptr);
    };
    auto const other = std::async(std::launch::async, [] { First::TheClass(); });
    Second::TheClass();
    other.wait();
    EXPECT_TRUE(First::TheClass()->IsReady());
    EXPECT_TRUE(Second::TheClass()->IsReady());
}

/// Calls back once.
struct ACallingLog : VLog {
    explicit ACallingLog(std::function<void()> call) : m_call(std::move(call)) {}
    void AddString(char const*) override {
        if (auto const call = std::exchange(m_call, nullptr)) {
            call();
        }
    }
    std::function<void()> m_call;
};

TEST_F(VClassStartTest, ThePrintingOfTheTableWaitsForNoClassThatNeedsTheRegistry) {
    using Slow = Numbered<7>;
    Signal isInHook;
    Signal isPrinting;
    Slow::ms_hook = [&] {
        isInHook.Send();
        EXPECT_TRUE(isPrinting.Arrives());
        EXPECT_TRUE(Numbered<8>::TheClass()->IsReady()); // waits for the table
    };
    auto const other = std::async(std::launch::async, [] { Slow::TheClass(); });
    EXPECT_TRUE(isInHook.Arrives());
    auto const log = VObjectRef<ACallingLog>::Adopt(new ACallingLog([&] {
        isPrinting.Send();
        EXPECT_FALSE(Slow::TheClass()->IsReady());
    }));
    VLog::SetLog(log.Get());
    VClass::DumpClassDetails(false, false);
    VLog::SetLog(nullptr);
    other.wait();
    EXPECT_TRUE(Slow::TheClass()->IsReady());
}

TEST_F(VClassStartTest, AHookThatThrowsIsRunAgainByTheNextUse) {
    using Failing = Numbered<5>;
    Failing::ms_hook = [] { throw std::runtime_error("hook"); };
    EXPECT_THROW(Failing::TheClass(), std::runtime_error);
    VClass* const record = Failing::ms_theClass;
    ASSERT_NE(record, nullptr);
    Failing::ms_hook = [] { throw std::runtime_error("hook"); };
    EXPECT_THROW(Failing::New(), std::runtime_error);
    long const records = VClass::TheClass()->Created();
    EXPECT_EQ(Failing::TheClass(), record);
    EXPECT_EQ(Failing::ms_calls, 3);
    EXPECT_EQ(VClass::TheClass()->Created(), records);
    Failing::TheClass();
    EXPECT_EQ(Failing::ms_calls, 3);
}

TEST_F(VClassStartTest, AUsersClassThatOutlivesTheLibraryIsSetUpByTheNextStart) {
    using Kept = Numbered<6>;
    auto const instance = VObjectRef<Kept>::Adopt(Kept::New());
    UninitializeLibrary(true, false, true);
    Kept::TheClass();
    EXPECT_EQ(Kept::ms_calls, 1);
    Kept::ms_hook = [] { throw std::runtime_error("hook"); };
    EXPECT_THROW(InitializeLibrary(false), std::runtime_error); // counts as a start
    InitializeLibrary(false);                                   // tries it again
    EXPECT_EQ(Kept::ms_calls, 3);
    UninitializeLibrary(true, false, true); // of the start that failed
}

template <class Used>
int UseAndFind() {
    Used::New()->Release();
    return VClass::ClassForClassName(Used::kClassName) == Used::ms_theClass ? 1 : 0;
}
template <int... Numbers>
int UseAll(std::integer_sequence<int, Numbers...>) {
    return (UseAndFind<Numbered<100 + Numbers>>() + ...);
}

TEST_F(VClassStartTest, ThreadsThatUseNewClassesAtOnceMakeEachOnce) {
    constexpr int kThreads = 4;
    using Numbers = std::make_integer_sequence<int, 32>;
    UninitializeLibrary(true, false, true); // nothing is there: the threads make the registry too
    testing_support::OnThreads(kThreads, [](int) { EXPECT_EQ(UseAll(Numbers{}), 32); });
    InitializeLibrary(false);
    EXPECT_EQ(Numbered<100>::ms_calls, 1);
    EXPECT_EQ(Numbered<131>::TheClass()->Created(), kThreads);
    auto const objects = VObjectRef<VPtrArray>::Adopt(VObject::TheClass()->SubClassesArray());
    int found = 0;
    for (long i = 0; i < objects->Count(); ++i) {
        std::string const name = static_cast<VClass*>(objects->PtrAtIndex(i))->Name();
        found += name.rfind("ANumbered1", 0) == 0 && name.size() == 12;
    }
    EXPECT_EQ(found, 32);
}

// What decides at the end of the library whether a record may go.
TEST_F(VClassStartTest, CountsOfThreadsAreExactSoThatTheEndFreesTheRightRecords) {
    constexpr int kThreads = 4;
    int const rounds = 50000 * testing_support::StressFactor();
    UninitializeLibrary(true, false, true);
    testing_support::OnThreads(kThreads, [rounds](int) { // makes the pools too
        for (int i = 0; i < rounds; ++i) {
            VData const data(1);
            VCriticalSection const section;
            VString const text("text");
            auto const pooled = VObjectRef<VString>::Adopt(VString::NewString("pooled"));
            auto const array = VObjectRef<VObjectArray>::Adopt(VObjectArray::NewObjectArray());
            if (i % 64 == 0) {
                VDictionary dictionary;
                dictionary.SetObjectForKey(pooled.Get(), pooled.Get());
            }
        }
    });
    EXPECT_EQ(VData::TheClass()->Existing(), 0);
    EXPECT_EQ(VData::TheClass()->Created(),
              kThreads * (rounds + 2L * ((rounds + 63) / 64))); // a dictionary has two arrays
    EXPECT_EQ(VDictionary::TheClass()->Existing(), 0);
    InitializeLibrary(false);
    UninitializeLibrary(true, false, true);
    EXPECT_EQ(VData::ms_theClass, nullptr);
    EXPECT_EQ(VString::ms_theClass, nullptr);
    EXPECT_EQ(VObjectArray::ms_theClass, nullptr);
    InitializeLibrary(false);
}

} // namespace
