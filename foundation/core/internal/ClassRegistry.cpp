#include "foundation/core/internal/ClassRegistry.h"

#include "foundation/containers/VPtrArrayTmpl.h"
#include "foundation/core/Registered.h"
#include "foundation/core/internal/ClassNameIndex.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/VThread.h"

#include <algorithm>
#include <cstring>
#include <list>
#include <new>
#include <utility>

namespace VFoundation {

namespace {

using RecordArray = VPtrArrayTmpl<VClass>;

// All constant-initialised: the registry works before and after every other static of the process.
std::atomic<RecordArray*> s_records{nullptr};
std::atomic<VCriticalSection*> s_lock{nullptr};
std::list<VClass*>* s_pending = nullptr; // records made while the array is being made
bool s_bStartUp = false;
bool s_bClassArrayIsSorted = false;
std::atomic<ClassNameIndex*> s_nameIndex{nullptr};
ClassNameIndex* s_oldIndexes = nullptr;
VClass* s_kept = nullptr;
VClass* s_setAside = nullptr;

/// The search that look-up by name stands for. It covers the indexes 0 to count - 2: callers rely on which
/// name it does not find.
VClass* HalfOpenSearch(RecordArray const& records, char const* name) {
    long low = 0;
    long high = records.Count() - 1;
    while (low < high) {
        long const middle = (low + high) / 2;
        VClass* const record = records.PtrAtIndex(middle);
        int const order = std::strcmp(name, record->Name());
        if (order == 0) {
            return record;
        }
        if (order < 0) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    return nullptr;
}

void ReleaseListAndLock() {
    if (RecordArray* const records = s_records.exchange(nullptr)) {
        records->Release();
    }
    if (VCriticalSection* const lock = s_lock.exchange(nullptr)) {
        lock->Release();
    }
}

ClassNameIndex* BuildNameIndex(RecordArray const& records) {
    long const count = records.Count();
    auto index = std::make_unique<ClassNameIndex>(static_cast<std::size_t>(count));
    char const* previous = nullptr;
    for (long i = 0; i < count; ++i) {
        char const* const name = records.PtrAtIndex(i)->Name();
        VClass* const found =
            previous && std::strcmp(previous, name) == 0 ? nullptr : HalfOpenSearch(records, name);
        if (found) {
            index->Insert(found);
        }
        previous = name;
    }
    return index.release();
}

} // namespace

bool ClassRegistry::Exists() noexcept {
    return s_records.load() != nullptr;
}

VCriticalSection* ClassRegistry::Lock() noexcept {
    return s_lock.load();
}

long ClassRegistry::Count() {
    RecordArray* const records = s_records.load();
    return records ? records->Count() : 0;
}

VClass* ClassRegistry::RecordAt(long index) {
    RecordArray* const records = s_records.load();
    return records ? records->PtrAtIndex(index) : nullptr;
}

/// Makes the lock and the list. Both are objects whose class records are made on the way: those wait in the
/// pending list, for there is nothing yet to enter them in.
void ClassRegistry::Make() {
    s_bStartUp = true;
    try {
        s_lock = new VCriticalSection;
        s_records = new RecordArray(false);
        VClass::TheClass();
        if (s_pending) {
            for (VClass* const record : *s_pending) {
                Append(record);
            }
        }
    } catch (...) {
        ReleaseListAndLock(); // what waits stays pending for the next attempt
        s_bStartUp = false;
        throw;
    }
    delete std::exchange(s_pending, nullptr);
    s_bStartUp = false;
}

void ClassRegistry::MakeIfAbsent() {
    if (!Exists() && !s_bStartUp) {
        Make();
    }
}

void ClassRegistry::Append(VClass* record) {
    RecordArray* const records = s_records.load();
    if (!records->IsPtrInArray(record)) {
        if (!records->AddPtr(record)) {
            throw std::bad_alloc();
        }
    }
    s_bClassArrayIsSorted = false;
    DropNameIndex();
}

void ClassRegistry::DropNameIndex() {
    if (ClassNameIndex* const index = s_nameIndex.exchange(nullptr)) {
        index->older.reset(std::exchange(s_oldIndexes, index));
    }
}

void ClassRegistry::Register(VClass* record) {
    std::lock_guard const creation(ClassCreationLock());
    MakeIfAbsent();
    if (!Exists()) {
        if (!s_pending) {
            s_pending = new std::list<VClass*>;
        }
        if (std::find(s_pending->begin(), s_pending->end(), record) == s_pending->end()) {
            s_pending->push_back(record);
        }
        return;
    }
    VCriticalSectionScope scope;
    scope.SetAndEnter(Lock());
    Append(record);
}

void ClassRegistry::Unregister(VClass* record) {
    if (Exists()) {
        VCriticalSectionScope scope;
        scope.SetAndEnter(Lock());
        if (s_records.load()->RemovePtr(record)) {
            DropNameIndex();
        }
    }
    if (s_pending) {
        s_pending->remove(record);
    }
    DropFromKept(record);
}

VClass* ClassRegistry::Find(char const* name) {
    if (ClassNameIndex const* const index = s_nameIndex.load()) {
        return index->Find(name);
    }
    if (!Exists()) {
        return nullptr;
    }
    VCriticalSectionScope scope;
    scope.SetAndEnter(Lock());
    if (!s_nameIndex.load()) {
        if (!s_bClassArrayIsSorted) {
            Sort();
        }
        s_nameIndex = BuildNameIndex(*s_records.load());
    }
    return s_nameIndex.load()->Find(name);
}

VClass* ClassRegistry::FindExactly(char const* name) {
    VCriticalSectionScope scope;
    scope.SetAndEnter(Lock());
    for (long i = 0; i < Count(); ++i) {
        if (std::strcmp(RecordAt(i)->Name(), name) == 0) {
            return RecordAt(i);
        }
    }
    return nullptr;
}

void ClassRegistry::Sort() {
    VCriticalSectionScope scope;
    scope.SetAndEnter(Lock());
    if (RecordArray* const records = s_records.load()) {
        records->SortWithComparisonFn(&VClass::SortFn_Name);
        s_bClassArrayIsSorted = true;
    }
}

void ClassRegistry::ClearSlot(VClass* record) {
    if (VClass** const slot = std::exchange(record->m_backPointer, nullptr)) {
        std::atomic_ref<VClass*>(*slot).store(nullptr, std::memory_order_release);
    }
}

/// No record may point at a superclass that is gone.
void ClassRegistry::ForgetAsSuperClass(VClass const* record) {
    auto const forget = [record](VClass* other) {
        if (other->m_superClass == record) {
            other->m_superClass = nullptr;
        }
    };
    for (long i = 0; i < Count(); ++i) {
        forget(RecordAt(i));
    }
    for (VClass* kept = s_kept; kept; kept = kept->m_nextKept) {
        forget(kept);
    }
    for (VClass* aside = s_setAside; aside; aside = aside->m_nextKept) {
        forget(aside);
    }
}

void ClassRegistry::Keep(VClass* record) {
    record->m_nextKept = std::exchange(s_kept, record);
    record->m_detached.store(true, std::memory_order_release);
}

void ClassRegistry::DropFromKept(VClass const* record) {
    for (VClass** link = &s_kept; *link; link = &(*link)->m_nextKept) {
        if (*link == record) {
            *link = (*link)->m_nextKept;
            return;
        }
    }
}

void ClassRegistry::Delete(VClass* record) {
    ForgetAsSuperClass(record);
    ClearSlot(record);
    delete record;
}

void ClassRegistry::WalkAndDelete(VClass* criticalSectionRecord, VClass* objectRecord,
                                  VClass* profilerRecord) {
    RecordArray* const records = s_records.load();
    VClass const* const own = VClass::TheClass(); // may be deleted on the way: compared, never looked into
    for (long i = records->Count() - 1; i >= 1; i = std::min(i, records->Count()) - 1) {
        VClass* const record = records->PtrAtIndex(i);
        if (record == own) {
            continue;
        }
        records->RemovePtrAtIndex(i);
        if (!record->m_backPointer || !*record->m_backPointer) {
            continue;
        }
        if (record->Existing() > 0) {
            bool const isTheRegistrysLock = record == criticalSectionRecord && record->Existing() == 1;
            if (!isTheRegistrysLock && record != profilerRecord) {
                Keep(record); // also if the hook throws
                record->UninitializeClass();
                DropFromKept(record);
            }
        } else if (record != objectRecord) {
            Delete(record);
            continue;
        }
        if (record->Existing() > 0 || record == objectRecord) {
            Keep(record);
        } else {
            Delete(record);
        }
    }
}

void ClassRegistry::Destroy(VClass* criticalSectionRecord, VClass* objectRecord, VClass* profilerRecord) {
    std::lock_guard const creation(ClassCreationLock());
    SweepSetAside();
    DropNameIndex();
    {
        VCriticalSectionScope scope;
        scope.SetAndEnter(Lock());
        try {
            WalkAndDelete(criticalSectionRecord, objectRecord, profilerRecord);
        } catch (...) { // the walk ends; what it did not reach is kept below
            if (VThread::CaughtEndOfThread()) {
                throw;
            }
        }
        RecordArray const& records = *s_records.load();
        for (long i = 0; i < records.Count(); ++i) {
            VClass* const record = records.PtrAtIndex(i);
            if (record->m_backPointer && *record->m_backPointer) {
                Keep(record);
            }
        }
    }
    ReleaseListAndLock();
    s_bClassArrayIsSorted = false;
    DropNameIndex();
    delete std::exchange(s_oldIndexes, nullptr);
}

void ClassRegistry::Retire(VClass* record) {
    if (!record) {
        return;
    }
    std::lock_guard const creation(ClassCreationLock());
    Unregister(record);
    if (record->Existing() <= 0) {
        Delete(record);
        return;
    }
    ForgetAsSuperClass(record);
    ClearSlot(record);
    record->m_nextKept = std::exchange(s_setAside, record);
    record->UninitializeClass();
}

void ClassRegistry::SweepSetAside() {
    for (VClass** link = &s_setAside; *link;) {
        VClass* const record = *link;
        if (record->Existing() <= 0) {
            *link = record->m_nextKept;
            delete record;
        } else {
            link = &record->m_nextKept;
        }
    }
}

void ClassRegistry::Reattach(VClass* record) {
    DropFromKept(record);
    record->m_nextKept = nullptr;
    record->m_detached.store(false, std::memory_order_release);
    Register(record);
}

void ClassRegistry::MarkAllForInitialization() {
    std::lock_guard const creation(ClassCreationLock());
    VCriticalSectionScope scope;
    scope.SetAndEnter(Lock());
    for (long i = 0; i < Count(); ++i) {
        RecordAt(i)->m_initializeAgain = true;
    }
    for (VClass* kept = s_kept; kept; kept = kept->m_nextKept) {
        kept->m_initializeAgain = true;
    }
}

} // namespace VFoundation
