#include "foundation/core/internal/ClassRegistry.h"

#include "foundation/containers/VPtrArrayTmpl.h"
#include "foundation/core/Mutex.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VMemoryProfiler.h"
#include "foundation/core/internal/ClassNameIndex.h"
#include "foundation/core/internal/ClassOwned.h"
#include "foundation/core/internal/ClassStart.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"
#include "foundation/threads/VThread.h"

#include <algorithm>
#include <cstring>
#include <list>
#include <mutex>
#include <new>
#include <thread>
#include <utility>

namespace VFoundation {

namespace {

using RecordArray = VPtrArrayTmpl<VClass>;

// All constant-initialised: the registry works before and after every other static of the process.
constinit std::recursive_mutex s_creationLock; // what `CreationScope` holds
constinit thread_local int t_creationDepth = 0;
std::atomic<RecordArray*> s_records{nullptr};
std::atomic<VCriticalSection*> s_lock{nullptr};
std::list<VClass*>* s_pending = nullptr; // records made while the array is being made
std::map<std::string, VClass*>* s_substitutions = nullptr;
VClass* s_ownRecord = nullptr;
bool s_bStartUp = false;
bool s_bClassArrayIsSorted = false;
std::atomic<ClassNameIndex*> s_nameIndex{nullptr};
std::atomic<std::int32_t> s_indexReaders{0};
VClass* s_kept = nullptr;

constinit detail::Mutex s_setAsideLock;
VClass* s_setAside VFOUNDATION_GUARDED_BY(s_setAsideLock) = nullptr;

/// The search that look-up by name is defined by. It covers the indexes 0 to count - 2: callers rely on which
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
    detail::ReleaseAndClear(s_records);
    detail::ReleaseAndClear(s_lock);
}

/// Holds the list's critical section; nothing when there is no list.
class ListScope {
  public:
    ListScope() { m_scope.SetAndEnter(s_lock.load()); }

  private:
    VCriticalSectionScope m_scope;
};

std::unique_ptr<ClassNameIndex> BuildNameIndex(RecordArray const& records) {
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
    return index;
}

} // namespace

ClassRegistry::CreationScope::CreationScope() noexcept {
    s_creationLock.lock();
    ++t_creationDepth;
}

ClassRegistry::CreationScope::~CreationScope() {
    --t_creationDepth;
    s_creationLock.unlock();
}

bool ClassRegistry::CreationScope::IsHeldByThisThread() noexcept {
    return t_creationDepth > 0;
}

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

// Making the list

/// Makes the lock and the list. Both are objects whose class records are made on the way: those wait in the
/// pending list, as there is nothing yet to enter them in.
void ClassRegistry::Make() {
    s_bStartUp = true;
    try {
        s_lock = new VCriticalSection;
        s_records = new RecordArray(false);
        OwnRecord();
        if (s_pending) {
            for (VClass* const record : *s_pending) {
                Append(record);
            }
        }
    } catch (...) {
        ReleaseListAndLock();
        while (s_pending && !s_pending->empty()) {
            delete s_pending->back(); // leaves the list; its class has no instances yet
        }
        delete std::exchange(s_pending, nullptr);
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

VClass* ClassRegistry::OwnRecord() {
    CreationScope const creation;
    MakeIfAbsent(); // asks for this record itself
    if (!s_ownRecord) {
        s_ownRecord = new VClass("VClass", nullptr, nullptr, 1, nullptr, nullptr, sizeof(VClass), nullptr);
    }
    return s_ownRecord;
}

std::map<std::string, VClass*>& ClassRegistry::Substitutions() {
    if (!s_substitutions) {
        s_substitutions = new std::map<std::string, VClass*>;
    }
    return *s_substitutions;
}

// Entering and leaving

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

void ClassRegistry::EnterInList(VClass* record) {
    MakeIfAbsent();
    if (Exists()) {
        ListScope const list;
        Append(record);
        return;
    }
    if (!s_pending) {
        s_pending = new std::list<VClass*>;
    }
    if (std::find(s_pending->begin(), s_pending->end(), record) == s_pending->end()) {
        s_pending->push_back(record);
    }
}

void ClassRegistry::LeaveList(VClass* record) {
    if (Exists()) {
        ListScope const list;
        if (s_records.load()->RemovePtr(record)) {
            DropNameIndex();
        }
    }
    if (s_pending) {
        s_pending->remove(record);
    }
    DropFromKept(record);
}

void ClassRegistry::Register(VClass* record) {
    EnterInList(record);
    if (s_ownRecord) {
        s_ownRecord->InstanceBorn();
    }
}

void ClassRegistry::Unregister(VClass* record) {
    CreationScope const creation;
    if (VClass* const own = s_ownRecord) {
        if (own->Living() > 0) { // the records made before it were never counted
            (void)own->InstanceGone();
        }
        if (own == record) {
            s_ownRecord = nullptr;
        } else if (own->Existing() == 1) {
            delete std::exchange(s_ownRecord, nullptr);
        }
    }
    LeaveList(record);
}

// Look-up

/// Frees the name index. A reader that comes now finds none and then waits for the lock that the caller holds, so
/// the readers soon leave.
void ClassRegistry::DropNameIndex() noexcept {
    std::unique_ptr<ClassNameIndex> const index(s_nameIndex.exchange(nullptr));
    while (index && s_indexReaders.load() != 0) {
        std::this_thread::yield();
    }
}

VClass* ClassRegistry::Find(char const* name) {
    VAtomicOp::AddToCount(s_indexReaders, 1);
    ClassNameIndex const* const index = s_nameIndex.load();
    VClass* const indexed = index ? index->Find(name) : nullptr;
    VAtomicOp::AddToCount(s_indexReaders, -1);
    if (index) {
        return indexed;
    }
    CreationScope const creation;
    if (!Exists()) {
        return nullptr;
    }
    ListScope const list;
    if (!s_nameIndex.load()) {
        if (!s_bClassArrayIsSorted) {
            Sort();
        }
        try {
            s_nameIndex = BuildNameIndex(*s_records.load()).release();
        } catch (std::bad_alloc const&) {
            return HalfOpenSearch(*s_records.load(), name);
        }
    }
    return s_nameIndex.load()->Find(name);
}

VClass* ClassRegistry::FindExactly(char const* name) {
    CreationScope const creation;
    ListScope const list;
    for (long i = 0; i < Count(); ++i) {
        if (std::strcmp(RecordAt(i)->Name(), name) == 0) {
            return RecordAt(i);
        }
    }
    return nullptr;
}

VClass* ClassRegistry::LastByName() {
    CreationScope const creation;
    ListScope const list;
    VClass* last = RecordAt(0);
    for (long i = 1; i < Count(); ++i) {
        VClass* const record = RecordAt(i);
        last = std::strcmp(record->Name(), last->Name()) > 0 ? record : last;
    }
    return last;
}

void ClassRegistry::Sort() {
    CreationScope const creation;
    ListScope const list;
    if (RecordArray* const records = s_records.load()) {
        records->SortWithComparisonFn(&VClass::SortFn_Name);
        s_bClassArrayIsSorted = true;
    }
}

// The end of records

void ClassRegistry::ClearSlot(VClass* record) {
    if (VClass** const slot = std::exchange(record->m_backPointer, nullptr); slot && *slot == record) {
        // release: publishes all earlier writes to whoever finds the slot empty
        std::atomic_ref<VClass*>(*slot).store(nullptr, std::memory_order_release);
    }
}

/// Calls `visit` for every record: registered, kept or set aside.
template <class Visit>
void ClassRegistry::ForAll(Visit visit) {
    for (long i = 0; i < Count(); ++i) {
        visit(RecordAt(i));
    }
    for (VClass* kept = s_kept; kept; kept = kept->m_nextKept) {
        visit(kept);
    }
    detail::MutexLock const lock(s_setAsideLock);
    for (VClass* aside = s_setAside; aside; aside = aside->m_nextKept) {
        visit(aside);
    }
}

/// No record may point at a superclass that is gone.
void ClassRegistry::ForgetAsSuperClass(VClass const* record) {
    ForAll([record](VClass* other) {
        if (other->SuperClass() == record) {
            other->m_superClass.store(nullptr, std::memory_order_release);
        }
    });
}

void ClassRegistry::Keep(VClass* record) {
    record->m_nextKept = std::exchange(s_kept, record);
    record->m_isUnstarted = record->m_state.exchange(VClass::State::eDetached) == VClass::State::eUnstarted;
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

void ClassRegistry::WalkAndDelete() {
    VClass const* const criticalSectionRecord = LoadClassSlot(VCriticalSection::ms_theClass);
    VClass const* const objectRecord = LoadClassSlot(VObject::ms_theClass);
    VClass const* const profilerRecord = LoadClassSlot(VMemoryProfiler::ms_theClass);
    RecordArray* const records = s_records.load();
    VClass const* const own = OwnRecord(); // may be deleted on the way: compared, never looked into
    for (long i = records->Count() - 1; i >= 1; i = std::min(i, records->Count()) - 1) {
        VClass* const record = records->PtrAtIndex(i);
        if (record == own) {
            continue;
        }
        records->RemovePtrAtIndex(i);
        DropNameIndex(); // a hook may have looked up a class
        if (!record->m_backPointer || !*record->m_backPointer) {
            continue;
        }
        if (record->Living() > 0) {
            bool const isTheRegistrysLock = record == criticalSectionRecord && record->Living() == 1;
            if (!isTheRegistrysLock && record != profilerRecord) {
                Keep(record); // also if the hook throws
                record->UninitializeClass();
                DropFromKept(record);
            }
        } else if (record != objectRecord) {
            Delete(record);
            continue;
        }
        if (record->Living() > 0 || record == objectRecord) {
            Keep(record);
        } else {
            Delete(record);
        }
    }
}

void ClassRegistry::Destroy() {
    CreationScope const creation;
    {
        ListScope const list;
        DropNameIndex();
        try {
            WalkAndDelete();
        } catch (...) { // the walk ends; what it did not reach is kept below
            if (VThread::CaughtEndOfThread()) {
                throw;
            }
        }
        DropNameIndex();
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
    delete std::exchange(s_substitutions, nullptr);
    delete std::exchange(s_ownRecord, nullptr);
}

void ClassRegistry::Retire(VClass* record) {
    if (!record) {
        return;
    }
    {
        CreationScope const creation;
        if (record->Living() == 0) {
            Delete(record);
            return;
        }
        Unregister(record);
        ForgetAsSuperClass(record);
        ClearSlot(record);
        record->m_isSetAside = true;
        detail::MutexLock const lock(s_setAsideLock);
        record->m_nextKept = std::exchange(s_setAside, record);
    }
    // The last instance may go meanwhile: whoever gives up the record last frees it.
    auto const giveUp = [record] {
        record->m_uninitialize = nullptr; // a later life of the class is not this record's
        if (narrow_cast<std::uint32_t>(VAtomicOp::AddToCount(record->m_instances, ~VClass::kHeld + 1)) == 0) {
            FreeSetAside(record);
        }
    };
    try {
        record->UninitializeClass();
    } catch (...) {
        giveUp();
        throw;
    }
    giveUp();
}

void ClassRegistry::FreeSetAside(VClass* record) noexcept {
    {
        detail::MutexLock const lock(s_setAsideLock);
        VClass** link = &s_setAside;
        while (*link != record) {
            link = &(*link)->m_nextKept;
        }
        *link = record->m_nextKept;
    }
    try {
        delete record;
    } catch (...) { // a pool's destructor; there is no caller who could do anything about it
    }
}

void ClassRegistry::TakeOut(VClass* record) {
    Unregister(record);
    ForgetAsSuperClass(record);
    ClearSlot(record);
    if (s_substitutions) {
        std::erase_if(*s_substitutions, [record](auto const& entry) { return entry.second == record; });
    }
    record->m_isSetAside = true; // its destructor finds nothing to unregister
}

bool ClassRegistry::HasSubclasses(VClass const& record, void const* ender) {
    CreationScope const creation;
    bool found = false;
    ForAll([&](VClass const* other) {
        found = found || (other->SuperClass() == &record && !IsClaimed(*other, ender));
    });
    return found;
}

bool ClassRegistry::IsClaimed(VClass const& record, void const* ender) noexcept {
    return record.m_state.load() == VClass::State::eEnding && record.m_starter.load() == ender;
}

// Later lives

void ClassRegistry::Reattach(VClass* record, VClass* superClass) {
    DropFromKept(record);
    record->m_nextKept = nullptr;
    VClass::State const after =
        std::exchange(record->m_isUnstarted, false) ? VClass::State::eUnstarted : VClass::State::eReady;
    record->m_superClass.store(superClass, std::memory_order_release);
    record->m_state.store(VClass::State::eBeingMade); // making the list may ask for this class
    try {
        Register(record);
    } catch (...) {
        record->m_state.store(after);
        Keep(record);
        throw;
    }
    record->m_state.store(after, std::memory_order_release);
}

void ClassRegistry::MarkAllForInitialization() {
    CreationScope const creation;
    ListScope const list;
    auto const mark = [](VClass* record) {
        record->m_initializeAgain = !record->m_isUnstarted && record->m_state != VClass::State::eUnstarted;
    };
    for (long i = 0; i < Count(); ++i) {
        mark(RecordAt(i));
    }
    for (VClass* kept = s_kept; kept; kept = kept->m_nextKept) {
        mark(kept);
    }
}

VClass* ClassRegistry::NextMarked() {
    CreationScope const creation;
    ListScope const list;
    for (long i = 0; i < Count(); ++i) {
        if (RecordAt(i)->m_initializeAgain) {
            return RecordAt(i);
        }
    }
    VClass* kept = s_kept;
    while (kept && !kept->m_initializeAgain) {
        kept = kept->m_nextKept;
    }
    return kept;
}

void ClassRegistry::InitializeMarked() {
    while (VClass* const record = NextMarked()) {
        ClassStart::RunAgain(*record);
    }
}

} // namespace VFoundation
