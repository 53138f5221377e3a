#include "foundation/containers/VObjectArrayTmpl.h"
#include "foundation/containers/VObjectRingBufferTmpl.h"
#include "foundation/containers/internal/TRecyclePool.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"
#include "tests/support/Stress.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using namespace VFoundation;
using testing_support::ACounted;
using eReason = UnregisterResult::eReason;

std::string s_calls;
std::function<void()> s_endHook; // of the class below, once

class UBase : public Registered<UBase, VObject> {
  public:
    static constexpr char const* kClassName =
        "UBase"; // not the first, which the end of the registry does not visit
    static inline VClass* ms_theClass = nullptr;
    explicit UBase(VClass* cls = nullptr) : Registered(cls) {}
    static UBase* New() { return new UBase; }
    static void InitializeClass() {
        s_calls += "+base ";
        if (!ms_kept) { // the end hook threw
            ms_kept = new UBase;
        }
    }
    static void UninitializeClass() {
        s_calls += "-base ";
        if (auto const hook = std::exchange(s_endHook, nullptr)) {
            hook();
        }
        if (auto const* const kept = std::exchange(ms_kept, nullptr)) {
            kept->Release();
        }
    }
    static inline UBase* ms_kept = nullptr;
};

class UDerived : public Registered<UDerived, UBase> {
  public:
    static constexpr char const* kClassName = "UDerived";
    static inline VClass* ms_theClass = nullptr;
    UDerived() : Registered(nullptr) {}
    static UDerived* New() { return new UDerived; }
    static void InitializeClass() { s_calls += "+derived "; }
    static void UninitializeClass() { s_calls += "-derived "; }
};

bool IsFound(char const* name) {
    return VClass::ClassForClassName(name) != nullptr;
}

class UnregisterClassesTest : public testing::Test {
  protected:
    void SetUp() override {
        InitializeLibrary(false);
        RegisterClasses<UDerived, UBase>();
        s_calls.clear();
    }
    void TearDown() override {
        s_endHook = nullptr;
        UninitializeLibrary(true, false, true);
        EXPECT_EQ(UBase::ms_theClass, nullptr);
        EXPECT_EQ(UDerived::ms_theClass, nullptr);
    }

    static std::string Calls() { return std::exchange(s_calls, ""); }
    static void ExpectThatBothWork() {
        EXPECT_EQ(VClass::ClassForClassName("UBase"), UBase::TheClass());
        EXPECT_EQ(VClass::ClassForClassName("UDerived"), UDerived::TheClass());
        EXPECT_EQ(UDerived::TheClass()->SuperClass(), UBase::TheClass());
        EXPECT_TRUE(UBase::TheClass()->IsReady());
        EXPECT_EQ(UBase::TheClass()->Existing(), UBase::ms_kept ? 1 : 0);
    }
};

TEST_F(UnregisterClassesTest, ForgetsTheClassesAndAllThatLedToThem) {
    long const records = VClass::TheClass()->Existing();
    VClass::SetClassSubstitution("Old", UDerived::TheClass());
    VClass::SetClassSubstitution("Other", VString::TheClass());
    VClass::SetClassSubstitution("UBase", VString::TheClass());
    EXPECT_TRUE(IsFound("UDerived"));
    EXPECT_TRUE((UnregisterClasses<UBase, UDerived, UBase>()));
    EXPECT_EQ(Calls(), "-derived -base ");
    EXPECT_FALSE(IsFound("UBase"));
    EXPECT_FALSE(IsFound("UDerived"));
    EXPECT_TRUE(IsFound("VString"));
    EXPECT_EQ(VClass::GetClassSubstitution("Old"), nullptr);
    EXPECT_EQ(VClass::GetClassSubstitution("Other"), VString::TheClass());
    EXPECT_EQ(VClass::GetClassSubstitution("UBase"), VString::TheClass()) << "which is still there";
    EXPECT_EQ(VClass::TheClass()->Existing(), records - 2);
    EXPECT_TRUE((UnregisterClasses<UBase, UDerived>())) << "they are gone";
    EXPECT_EQ(Calls(), "");

    UDerived::New()->Release();
    EXPECT_EQ(Calls(), "+base +derived ");
    EXPECT_EQ(UDerived::TheClass()->Created(), 1) << "the record is a new one";
    ExpectThatBothWork();
}

TEST_F(UnregisterClassesTest, SubclassesKeepAClass) {
    UnregisterResult const refused = UnregisterClasses<UBase>();
    EXPECT_FALSE(refused);
    EXPECT_EQ(refused.cls, UBase::TheClass());
    EXPECT_EQ(refused.reason, eReason::eSubclasses);
    EXPECT_EQ(Calls(), "");
    ExpectThatBothWork();
    s_endHook = [] { UDerived::TheClass(); }; // a subclass that comes meanwhile
    EXPECT_TRUE(UnregisterClasses<UDerived>());
    EXPECT_EQ(UnregisterClasses<UBase>().reason, eReason::eSubclasses);
    ExpectThatBothWork();
}

TEST_F(UnregisterClassesTest, InstancesKeepAllClassesThatAreNamed) {
    auto object = VObjectRef<VObject>::Adopt(UDerived::New());
    UnregisterResult refused = UnregisterClasses<UBase, UDerived, ACounted>();
    EXPECT_EQ(refused.cls, UDerived::TheClass());
    EXPECT_EQ(refused.reason, eReason::eInstances);
    EXPECT_EQ(Calls(), "-derived -base +base +derived ") << "they might have ended the instances";
    EXPECT_EQ(object->Class(), UDerived::TheClass());
    ExpectThatBothWork();

    auto const counted = VObjectRef<ACounted>::Adopt(ACounted::New());
    EXPECT_EQ(UnregisterClasses<ACounted>().reason, eReason::eInstances);
    EXPECT_EQ(ACounted::TheClass()->Existing(), 1);

    object = VObjectRef<VObject>::Adopt(UBase::New());
    EXPECT_EQ((UnregisterClasses<UBase, UDerived>().cls), UBase::TheClass());
    object = nullptr;
    ExpectThatBothWork();
}

TEST_F(UnregisterClassesTest, AHookThatThrowsKeepsAllClasses) {
    s_endHook = [] { throw std::runtime_error("hook"); };
    EXPECT_THROW((void)(UnregisterClasses<UBase, UDerived>()), std::runtime_error);
    EXPECT_EQ(Calls(), "-derived -base ");
    ExpectThatBothWork();
    EXPECT_EQ(Calls(), "+base +derived ") << "at the next use";
    EXPECT_TRUE((UnregisterClasses<UBase, UDerived>()));
}

TEST_F(UnregisterClassesTest, AHookMayCallBack) {
    UnregisterResult inner;
    bool isFound = false;
    s_endHook = [&] {
        inner = UnregisterClasses<UBase>();
        isFound = IsFound("UBase");
        UBase::New()->Release();
        EXPECT_TRUE(UnregisterClasses<ACounted>());
    };
    EXPECT_TRUE((UnregisterClasses<UBase, UDerived>()));
    EXPECT_EQ(inner.reason, eReason::eInUse);
    EXPECT_TRUE(isFound);
    EXPECT_EQ(Calls(), "-derived -base ");
}

TEST_F(UnregisterClassesTest, ARecordThatOutlivedTheLibraryGoesToo) {
    auto object = VObjectRef<VObject>::Adopt(UDerived::New());
    UninitializeLibrary(true, false, true);
    EXPECT_EQ(UnregisterClasses<UDerived>().reason, eReason::eInstances);
    EXPECT_STREQ(object->ClassName(), "UDerived");
    object = nullptr;
    EXPECT_TRUE(UnregisterClasses<UDerived>());
    EXPECT_EQ(UDerived::ms_theClass, nullptr);
    InitializeLibrary(false);
    EXPECT_FALSE(IsFound("UDerived"));
}

TEST_F(UnregisterClassesTest, RingsAndRecycledArraysOfTheClassGo) {
    using Ring = VObjectRingBufferTmpl<ACounted>;
    {
        auto const ring = MakeObject<Ring>(4UL);
        auto const array = MakeObject<VObjectArrayTmpl<ACounted>>(); // into the pool
        EXPECT_EQ(UnregisterClasses<Ring>().cls, Ring::TheClass());
        array->AddObject(ring.Get());
    }
    EXPECT_TRUE((UnregisterClasses<ACounted, Ring>()));
    EXPECT_FALSE(IsFound("TRingBuffer_ACounted"));
    EXPECT_EQ(TRecyclePool<VObjectArray>::Count(VObjectArray::ms_recycledArrays), 0);
    EXPECT_EQ(Ring::TheClass()->Created(), 0);
}

TEST_F(UnregisterClassesTest, OtherThreadsFindClassesMeanwhile) {
    std::atomic<bool> isOver{false};
    std::atomic<int> wrong{0};
    testing_support::OnThreads(3, [&](int thread) {
        if (thread == 0) {
            for (int i = 0; i < 300; ++i) {
                UDerived::New()->Release();
                wrong += UnregisterClasses<UDerived, UBase>() ? 0 : 1;
            }
            isOver = true;
        }
        while (!isOver) {
            (void)IsFound("UDerived");
            wrong += VClass::ClassForClassName("VString") == VString::TheClass() ? 0 : 1;
            VObjectArray::NewObjectArray()->Release();
        }
    });
    EXPECT_EQ(wrong, 0);
}

} // namespace
