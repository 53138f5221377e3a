#include "foundation/core/VException.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/strings/VData.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <malloc.h>
#include <stdexcept>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

class VClassEndTest : public testing::Test {
  protected:
    void SetUp() override { InitializeLibrary(false); }
    void TearDown() override {
        if (IsLibraryInitialized()) {
            UninitializeLibrary(true, false, true);
        }
    }
};

TEST_F(VClassEndTest, ClearsTheSlotsOfClassesWithoutObjects) {
    ACounted::New()->Release();
    UninitializeLibrary(true, false, true);
    EXPECT_EQ(ACounted::ms_theClass, nullptr);
    EXPECT_EQ(VObject::ms_theClass, nullptr);
    EXPECT_TRUE(VObject::ms_finalShutdown);
    EXPECT_FALSE(VClass::DestroyClassRegistry());

    VClass* const fresh = ACounted::TheClass(); // works without the library, and counts from the start
    EXPECT_EQ(fresh->Created(), 0);
    EXPECT_EQ(fresh->SuperClass(), VObject::TheClass());
    EXPECT_FALSE(VObject::ms_finalShutdown);
    InitializeLibrary(false);
    EXPECT_EQ(ACounted::TheClass(), fresh);
}

TEST_F(VClassEndTest, AClassWithObjectsKeepsItsRecordAndEntersTheNextRegistryOnce) {
    ACounted* const survivor = ACounted::New();
    VClass* const record = survivor->Class();
    UninitializeLibrary(true, false, true);
    EXPECT_EQ(ACounted::ms_theClass, record);
    EXPECT_STREQ(survivor->ClassName(), "ACounted");
    EXPECT_FALSE(survivor->IsKindOfClass(VObject::ms_theClass ? VObject::ms_theClass
                                                              : ACounted::ms_theClass->SuperClass()));

    InitializeLibrary(false);
    EXPECT_EQ(ACounted::TheClass(), record);
    EXPECT_TRUE(survivor->IsKindOfClass(VObject::TheClass()));
    EXPECT_EQ(VClass::ClassForClassName("ACounted"), record);
    EXPECT_EQ(record->Existing(), 1);
    survivor->Release();
    EXPECT_EQ(record->Existing(), 0);
}

TEST_F(VClassEndTest, ObjectsMayOutliveARecordThatIsDeletedByName) {
    auto* const data = new VData(8); // its class's record is among those deleted last
    UninitializeLibrary(true, false, true);
    EXPECT_EQ(VData::ms_theClass, nullptr);
    InitializeLibrary(false);
    EXPECT_STREQ(data->ClassName(), "VData");
    data->Release();
}

TEST_F(VClassEndTest, ARecordSetAsideGoesWithItsLastInstance) {
    std::size_t afterTenth = 0;
    VObjectRef<VData> survivor;
    for (int life = 0; life < 200; ++life) {
        auto const next = VObjectRef<VData>::Adopt(new VData(8));
        UninitializeLibrary(true, false, true);
        if (life % 2 == 0) {
            InitializeLibrary(false);
        }
        survivor = next; // the former one goes in a later life than its own, or between two
        if (life % 2 == 1) {
            InitializeLibrary(false);
        }
        if (life == 10) {
            afterTenth = mallinfo2().uordblks;
        }
    }
    EXPECT_LE(mallinfo2().uordblks, afterTenth + 16 * 1024);
}

TEST_F(VClassEndTest, AnObjectThatGoesAfterTheEndStillCountsButItsRecordIsFreed) {
    auto* const object = ACounted::New();
    VClass* const record = object->Class();
    UninitializeLibrary(true, false, true);
    object->Release();
    EXPECT_EQ(record->Existing(), 1);
    InitializeLibrary(false);
    EXPECT_EQ(ACounted::TheClass(), record);
    EXPECT_EQ(record->Existing(), 1);
    UninitializeLibrary(true, false, true);
    EXPECT_EQ(ACounted::ms_theClass, nullptr);
}

class AThrowing : public Registered<AThrowing, VObject> {
  public:
    static constexpr char const* kClassName = "AThrowing";
    static inline VClass* ms_theClass = nullptr;
    AThrowing() : Registered(nullptr) {}
    static AThrowing* New() { return new AThrowing; }
    static void UninitializeClass() {
        if (ms_throws) {
            throw std::runtime_error("hook");
        }
    }
    static inline bool ms_throws = false;
};

TEST_F(VClassEndTest, WhatAHookThrowsLeavesARecordAsAnException) {
    auto const throws = [] { throw std::runtime_error("hook"); };
    auto const throwsOurs = [] { throw VException(VException::eFileNotFound, nullptr, "hook", 3); };
    struct {
        char const* name;
        void (*hook)();
        long id, stage;
        char const* text;
    } const rows[] = {{"AThrowing", throws, 0, -1, "~VClass: AThrowing"},
                      {"AThrowing", throwsOurs, VException::eFileNotFound, 3, "hook"},
                      {nullptr, throws, 0, -1, "~VClass: <unknown>\n"}};
    for (auto const& [name, hook, id, stage, text] : rows) {
        VClass* slot = nullptr;
        VClass* const former = new VClass("AFormer", nullptr, nullptr, 1, nullptr, nullptr, 24, &slot);
        auto* const record = new VClass(name, nullptr, nullptr, 1, nullptr, hook, 24, &slot);
        delete former;
        EXPECT_EQ(slot, record) << "not the former one's any more";
        EXPECT_STREQ(record->Name(), name ? name : "");
        try {
            delete record;
            FAIL() << "nothing was thrown";
        } catch (VException const& exception) {
            EXPECT_EQ(exception.Id(), id);
            EXPECT_STREQ(exception.DescriptionText().CString(), text);
            EXPECT_EQ(exception.Stage(), stage);
        }
        EXPECT_EQ(slot, nullptr);
    }
}

TEST_F(VClassEndTest, AHookThatThrowsEndsTheWalkAndNothingElse) {
    auto const survivor = MakeObject<AThrowing>();
    AThrowing::ms_throws = true;
    EXPECT_TRUE(VClass::DestroyClassRegistry());
    AThrowing::ms_throws = false;
    EXPECT_FALSE(VClass::DestroyClassRegistry());
    EXPECT_NE(ACounted::TheClass(), nullptr);
    EXPECT_EQ(VClass::ClassForClassName("ACounted"), ACounted::TheClass());
    EXPECT_EQ(VClass::ClassForClassName("AThrowing"), AThrowing::TheClass());
}

class AFirst : public Registered<AFirst, VObject> { // "AFirst" sorts to the first place
  public:
    static constexpr char const* kClassName = "AAFirst";
    static inline VClass* ms_theClass = nullptr;
    AFirst() : Registered(nullptr) {}
    static AFirst* New() { return new AFirst; }
};

TEST_F(VClassEndTest, TheFirstEntryIsNotVisited) {
    VClass* const record = AFirst::TheClass();
    VClass::SortClassArray();
    UninitializeLibrary(true, false, true);
    EXPECT_EQ(AFirst::ms_theClass, record);
    EXPECT_EQ(record->SuperClass(), nullptr);
    InitializeLibrary(false);
    EXPECT_EQ(AFirst::TheClass(), record);
    EXPECT_EQ(record->SuperClass(), VObject::TheClass());
}

} // namespace
