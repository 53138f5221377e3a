#include "foundation/containers/VPtrArray.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/core/internal/ClassRegistry.h"
#include "foundation/log/VLog.h"
#include "foundation/strings/values/SPoint.h"
#include "foundation/strings/values/SRect.h"
#include "foundation/strings/values/SSize.h"
#include "foundation/strings/values/SValue.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"

namespace VFoundation {

namespace {

constexpr char const* kRule =
    "+-----+----------------------------------+--------+--------+--------+--------+--------+--------+\n";
constexpr char const* kPoolRule = "+-----+----------------------------------+----------+----------+\n";

/// Keeps the table's lines free of times and other additions while it is printed.
class PlainOutputScope {
  public:
    explicit PlainOutputScope(VLog* log) : m_log(log) {
        if (log) {
            m_showContextTime = log->GetShowContextTime();
            m_allowAnnotations = log->GetAllowAnnotations();
            log->SetShowContextTime(false);
            log->SetAllowAnnotations(false);
        }
    }
    ~PlainOutputScope() {
        if (m_log) {
            m_log->SetShowContextTime(m_showContextTime);
            m_log->SetAllowAnnotations(m_allowAnnotations);
        }
    }
    PlainOutputScope(PlainOutputScope const&) = delete;
    PlainOutputScope& operator=(PlainOutputScope const&) = delete;

  private:
    VObjectRef<VLog> m_log;
    bool m_showContextTime = false;
    bool m_allowAnnotations = false;
};

struct Totals {
    long created = 0;
    long existing = 0;
};

void PrintHeading(bool commaSeparated) {
    if (commaSeparated) {
        VLog::Divider();
        VLog::Trace("  Num , Classname                        , Create , Exist  , MaxSim , Size   , SubCr  , "
                    "SubCls  \n");
        return;
    }
    VLog::Trace("\n");
    VLog::Trace("%i classes\n", narrow_cast<int>(ClassRegistry::Count()));
    VLog::Trace("\n");
    VLog::Trace("SRect  size: %li  SPoint size: %li  SSize  size: %li  SValue  size: %li\n",
                static_cast<long>(sizeof(SRect)), static_cast<long>(sizeof(SPoint)),
                static_cast<long>(sizeof(SSize)), static_cast<long>(sizeof(SValue)));
    VLog::Trace("%s", kRule);
    VLog::Trace(
        "| Num | Classname                        | Create | Exist  | MaxSim | Size   | SubCr  | SubCls |\n");
    VLog::Trace("%s", kRule);
}

void PrintRow(long index, VClass& record, bool commaSeparated) {
    auto const subClasses = VObjectRef<VPtrArray>::Adopt(record.SubClassesArray());
    long createdBelow = 0;
    for (long i = 0; i < subClasses->Count(); ++i) {
        createdBelow += static_cast<VClass const*>(subClasses->PtrAtIndex(i))->Created();
    }
    long const size = static_cast<long>(record.Size());
    int const number = narrow_cast<int>(index);
    if (commaSeparated) {
        VLog::Trace("  %03i , %32s , %6li , %6li , %6li , %6li , %6li , %6li  \n", number, record.Name(),
                    record.Created(), record.Existing(), record.MaxSimultaneous(), size, createdBelow,
                    subClasses->Count());
    } else {
        VLog::Trace("| %03i | %32s | %6li | %6li | %6li | %6li | %6li | %6li |\n", number, record.Name(),
                    record.Created(), record.Existing(), record.MaxSimultaneous(), size, createdBelow,
                    subClasses->Count());
    }
}

void PrintPools(bool onlyExisting) {
    bool any = false;
    for (long i = 0; i < ClassRegistry::Count(); ++i) {
        VClass const& record = *ClassRegistry::RecordAt(i);
        if (!record.Pool() || (onlyExisting && record.Existing() < 1)) {
            continue;
        }
        if (!any) {
            VLog::Trace("%s", kPoolRule);
            VLog::Trace("| Num | Classname                        | PoolSize | PoolMax  |\n");
            VLog::Trace("%s", kPoolRule);
            any = true;
        }
        VLog::Trace("| %03i | %32s | %8li | %8li |\n", narrow_cast<int>(i), record.Name(),
                    record.Pool()->PoolSize(), record.Pool()->MaxPoolSize());
    }
    if (any) {
        VLog::Trace("%s", kPoolRule);
    }
}

} // namespace

void VClass::DumpClassDetails(bool onlyExisting, bool commaSeparated) {
    if (!ClassRegistry::Exists()) {
        return;
    }
    // Printing may make class records, which takes this lock first.
    ClassRegistry::CreationScope const creation;
    VCriticalSectionScope scope;
    scope.SetAndEnter(ClassRegistry::Lock());
    PlainOutputScope const plain(VLog::GetDefaultLog());

    PrintHeading(commaSeparated);
    Totals totals;
    for (long i = 0; i < ClassRegistry::Count(); ++i) {
        VClass& record = *ClassRegistry::RecordAt(i);
        if (!onlyExisting || record.Existing() >= 1) {
            PrintRow(i, record, commaSeparated);
        }
        totals.created += record.Created(); // after the row's array is gone: arrays are counted too
        totals.existing += record.Existing();
    }
    if (!commaSeparated) {
        VLog::Trace("%s", kRule);
        VLog::Trace("Total created: %6li  existing: %6li  size: VObject: %3li\n", totals.created,
                    totals.existing, static_cast<long>(sizeof(VObject)));
        PrintPools(onlyExisting);
    }
}

} // namespace VFoundation
