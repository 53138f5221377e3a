#include "foundation/containers/VPtrArray.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/internal/ClassRegistry.h"
#include "foundation/core/lifecycle/VLibrary.h"
#include "foundation/log/VLog.h"
#include "foundation/persistence/VXMLFile.h"
#include "foundation/strings/VString.h"
#include "tests/support/Counted.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <malloc.h>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace VFoundation;
using testing_support::ACounted;

/// Every record there is, sorted by name as the registry sorts them.
std::vector<VClass*> AllRecords() {
    std::vector<VClass*> records;
    auto const objects = VObjectRef<VPtrArray>::Adopt(VObject::TheClass()->SubClassesArray());
    for (long i = 0; i < objects->Count(); ++i) {
        records.push_back(static_cast<VClass*>(objects->PtrAtIndex(i)));
    }
    records.push_back(VClass::TheClass());
    std::sort(records.begin(), records.end(),
              [](VClass* a, VClass* b) { return std::string(a->Name()) < b->Name(); });
    return records;
}

class VClassTest : public testing::Test {
  protected:
    void SetUp() override {
        InitializeLibrary(false);
        ACounted::TheClass();
    }
    void TearDown() override { UninitializeLibrary(true, false, true); }
};

TEST_F(VClassTest, EveryRecordKeepsTheRulesOfTheClassRecord) {
    std::set<std::string> names;
    for (VClass* const record : AllRecords()) {
        SCOPED_TRACE(record->Name());
        EXPECT_TRUE(names.insert(record->Name()).second);
        EXPECT_EQ(ClassRegistry::FindExactly(record->Name()), record);
        bool const isRoot = record == VClass::TheClass() || record == VObject::TheClass();
        EXPECT_EQ(record->SuperClass() == nullptr, isRoot);
        if (record != VClass::TheClass()) {
            EXPECT_GE(record->Size(), sizeof(VObject));
            EXPECT_TRUE(record->IsSubClassOfClass(VObject::TheClass()));
        }
        long const created = record->Created();
        long const existing = record->Existing();
        VString::ms_bRecyclingEnabled = false;
        VObject* const instance = record->NewInstance();
        VString::ms_bRecyclingEnabled = true;
        if (!instance) {
            continue;
        }
        EXPECT_EQ(instance->Class(), record);
        EXPECT_STREQ(instance->ClassName(), record->Name());
        bool const isPooled = record->Created() == created; // came out of its class's pool
        EXPECT_EQ(record->Created(), created + !isPooled);
        EXPECT_EQ(record->Existing(), existing + !isPooled);
        instance->Release();
    }
    EXPECT_GT(names.size(), 20U);
}

TEST_F(VClassTest, FindsEveryNameButTheLast) {
    auto const records = AllRecords();
    EXPECT_EQ(VClass::ClassForClassName(records.back()->Name()), nullptr);
    for (std::size_t i = 0; i + 1 < records.size(); ++i) {
        EXPECT_EQ(VClass::ClassForClassName(records[i]->Name()), records[i]) << records[i]->Name();
    }
    EXPECT_EQ(VClass::ClassForClassName(nullptr), nullptr);
    EXPECT_EQ(VClass::ClassForClassName(""), nullptr);
    EXPECT_EQ(VClass::ClassForClassName("vobject"), nullptr);
}

TEST_F(VClassTest, ANewClassMovesTheLastPlace) {
    std::string const formerLast = AllRecords().back()->Name();
    ASSERT_EQ(VClass::ClassForClassName(formerLast.c_str()), nullptr);
    VClass* slot = nullptr;
    auto* const record = new VClass("ZZ", VObject::TheClass(), nullptr, 1, nullptr, nullptr, 24, &slot);
    EXPECT_EQ(slot, record);
    EXPECT_NE(VClass::ClassForClassName(formerLast.c_str()), nullptr);
    EXPECT_EQ(VClass::ClassForClassName("ZZ"), nullptr);
    EXPECT_EQ(ClassRegistry::FindExactly("ZZ"), record);
    delete record;
    EXPECT_EQ(slot, nullptr);
    EXPECT_EQ(VClass::ClassForClassName(formerLast.c_str()), nullptr);
}

TEST_F(VClassTest, LookUpKeepsOneIndex) {
    auto const createFindDelete = [](int times) {
        for (int i = 0; i < times; ++i) {
            VClass* slot = nullptr;
            auto* const record = new VClass("AShort", nullptr, nullptr, 1, nullptr, nullptr, 24, &slot);
            EXPECT_EQ(VClass::ClassForClassName("AShort"), record);
            delete record;
        }
    };
    createFindDelete(10);
    std::size_t const before = mallinfo2().uordblks;
    createFindDelete(500);
    EXPECT_LE(mallinfo2().uordblks, before + 16 * 1024);
}

TEST_F(VClassTest, SubstitutesNames) {
    for (VClass* const cls : {ACounted::TheClass(), static_cast<VClass*>(nullptr)}) {
        VClass::SetClassSubstitution("OldName", cls);
        EXPECT_EQ(VClass::GetClassSubstitution("OldName"), cls);
    }
    EXPECT_EQ(VClass::GetClassSubstitution(nullptr), nullptr);
}

TEST_F(VClassTest, SortsNullsLast) {
    void const* ascending[] = {VObject::TheClass(), VString::TheClass(), nullptr};
    for (int const i : {0, 1}) {
        EXPECT_LT(VClass::SortFn_Name(&ascending[i], &ascending[i + 1]), 0);
        EXPECT_GT(VClass::SortFn_Name(&ascending[i + 1], &ascending[i]), 0);
    }
}

std::string Dumped(bool onlyExisting, bool commaSeparated) {
    testing::internal::CaptureStderr();
    VClass::DumpClassDetails(onlyExisting, commaSeparated);
    return testing::internal::GetCapturedStderr();
}

class RecordingPool : public IVInstancePool {
  public:
    ~RecordingPool() override { ++destroyed; }
    VObject* NewInstance() override { return ACounted::New(); }
    void InitializeClass() override { ++initialized; }
    void UninitializeClass() override {}
    long PoolSize() const override { return 3; }
    long MaxPoolSize() const override { return 9; }
    static inline int initialized = 0;
    static inline int destroyed = 0;
};

TEST_F(VClassTest, APoolTakesTheFactorysAndTheHooksPlace) {
    VClass* slot = nullptr;
    auto* const record = new VClass("APooled", VObject::TheClass(), nullptr, 1, nullptr, nullptr, 24, &slot);
    EXPECT_EQ(record->NewInstance(), nullptr);
    record->SetPool(new RecordingPool);
    record->SetPool(new RecordingPool);
    EXPECT_EQ(RecordingPool::destroyed, 1);
    record->InitializeClass();
    EXPECT_EQ(RecordingPool::initialized, 1);
    VObject* const instance = record->NewInstance();
    EXPECT_TRUE(instance->IsMemberOfClass(ACounted::TheClass()));
    instance->Release();
    InitializeLibrary(false);
    std::string const table = Dumped(false, false);
    EXPECT_EQ(Dumped(true, false).find("APooled"), std::string::npos) << "it has no objects";
    UninitializeLibrary(false, false, true);
    EXPECT_NE(table.find("| Num | Classname                        | PoolSize | PoolMax  |\n"),
              std::string::npos);
    EXPECT_NE(table.find("|                          APooled |        3 |        9 |\n"), std::string::npos);
    delete record;
    EXPECT_EQ(RecordingPool::destroyed, 2);
}

/// One row of the table.
struct Row {
    std::string number;
    std::string name;
    long created = 0;
    long existing = 0;
};

std::vector<Row> Rows(std::string table) {
    std::replace(table.begin(), table.end(), '|', ' ');
    std::istringstream lines(table);
    std::vector<Row> rows;
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        Row row;
        if (words >> row.number >> row.name >> row.created >> row.existing) {
            rows.push_back(row);
        }
    }
    return rows;
}

TEST_F(VClassTest, DumpPrintsRowsOfLivingClassesAndCountsAll) {
    auto const living = VObjectRef<ACounted>::Adopt(ACounted::New());
    VLog* const log = VLog::GetDefaultLog();
    log->SetShowContextTime(true);
    std::string const table = Dumped(true, false);
    EXPECT_TRUE(log->GetShowContextTime());
    EXPECT_TRUE(log->GetAllowAnnotations());
    log->SetShowContextTime(false);
    EXPECT_NE(table.find(" classes\n\nSRect  size: "), std::string::npos);
    EXPECT_NE(table.find("|                         ACounted | "), std::string::npos);
    EXPECT_EQ(table.find("VMutex"), std::string::npos);
    std::string const commas = Dumped(false, true);
    EXPECT_NE(commas.find("  Num , Classname                        , Create , "), std::string::npos);
    EXPECT_NE(commas.find(" ,                           VMutex ,      "), std::string::npos);
    EXPECT_EQ(commas.find("Total"), std::string::npos);
}

TEST_F(VClassTest, DumpTotalsAreTakenOnceTheRowsArrayIsGone) {
    VString totals;
    for (int i = 0; i < 1000; ++i) {
        ACounted::New()->Release();
    }
    std::string const table = Dumped(false, false);
    auto const rows = Rows(table);
    ASSERT_GT(rows.size(), 60U);
    EXPECT_EQ(rows[12].number, "012");
    long created = 0;
    long existing = -1; // the row of the array's own class was printed while the array existed
    for (Row const& row : rows) {
        created += row.created;
        existing += row.existing;
    }
    totals.Format("Total created: %6li  existing: %6li  ", created, existing);
    EXPECT_NE(table.find(totals.CString()), std::string::npos) << totals.CString();
    // Classes without instances print no row and count all the same.
    std::string const shorter = Dumped(true, false);
    EXPECT_LT(Rows(shorter).size(), rows.size());
    totals.Format("  existing: %6li  ", existing);
    EXPECT_NE(shorter.find(totals.CString()), std::string::npos);
    EXPECT_GE(std::stol(shorter.substr(shorter.find("created:") + 8)), created);
}

TEST_F(VClassTest, ClassesAreRegisteredInOrder) {
    UninitializeLibrary(true, false, true);
    InitializeLibrary(false);
    std::string const expected =
        "VString VFile VAIFile VArchive VBitString VCmdEvent VColour VDate VDev VDictionaryPair VDictionary "
        "VDiskInfo VFileInfo VFileManager VFloatVector VFloatVectorMapXY VGraph VGraphEdge VGraphNode "
        "VHashTable "
        "VImage VJob VJobServer VJobServerPool VJobPoolTicket VLock VLog VLogContext VLogFile "
        "VMemoryProfiler "
        "VMutex VNotification VNotificationCenter VNotificationTuple VObjectQueue VObjectStack "
        "VObjectUndoStack "
        "VPoint VRange VRect VSemaphore VSize VStringTokenizer VThread VTimeRange VTree VURL VValue "
        "VWindowFunction VPDFConnection VConnectionTuple VCommandDelayer VMessageCenter VException VSet "
        "VGarbageCan VXMLFile ";
    std::string registered;
    for (Row const& row : Rows(Dumped(false, false))) {
        if ((" " + expected).find(" " + row.name + " ") != expected.npos) {
            registered += row.name + " ";
        }
    }
    EXPECT_EQ(registered, expected);
}

class AFirstClass : public Registered<AFirstClass, VObject> {
  public:
    static constexpr char const* kClassName = "AFirstClass";
    static inline VClass* ms_theClass = nullptr;
    AFirstClass() : Registered(nullptr) {}
    static AFirstClass* New() { return new AFirstClass; }
};
class ZLastClass : public Registered<ZLastClass, VObject> {
  public:
    static constexpr char const* kClassName = "ZLastClass";
    static inline VClass* ms_theClass = nullptr;
    ZLastClass() : Registered(nullptr) {}
    static ZLastClass* New() { return new ZLastClass; }
};

TEST_F(VClassTest, ClassesOfAnApplicationAreRegisteredTogether) {
    EXPECT_EQ(VClass::ClassForClassName("AFirstClass"), nullptr);
    testing::internal::CaptureStderr();
    EXPECT_EQ((RegisterClasses<AFirstClass, ACounted>()), nullptr);
    EXPECT_EQ(VClass::ClassForClassName("AFirstClass"), AFirstClass::TheClass());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    testing::internal::CaptureStderr();
    EXPECT_EQ((RegisterClasses<AFirstClass, ZLastClass>()), ZLastClass::TheClass());
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "RegisterClasses - class 'ZLastClass' sorts last and is not found by name\n");
    EXPECT_EQ(VClass::ClassForClassName("ZLastClass"), nullptr);
    EXPECT_EQ(VClass::ClassForClassName("VXMLFile"), VXMLFile::TheClass());
    delete ZLastClass::TheClass(); // so that the last place is another test's
}

} // namespace
