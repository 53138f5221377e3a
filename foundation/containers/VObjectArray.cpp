#include "foundation/containers/VObjectArray.h"

#include "foundation/containers/internal/KeepAlive.h"
#include "foundation/containers/internal/SlotBlock.h"
#include "foundation/containers/internal/Snapshot.h"
#include "foundation/containers/internal/SortSlots.h"
#include "foundation/containers/internal/TRecyclePool.h"
#include "foundation/core/NarrowCast.h"
#include "foundation/strings/VString.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"

namespace VFoundation {

VClass* VObjectArray::ms_theClass = nullptr;
std::atomic<VObjectRingBufferTmpl<VObjectArray>*> VObjectArray::ms_recycledArrays{nullptr};
std::atomic<bool> VObjectArray::ms_bRecyclingEnabled{true};

using ArrayPool = TRecyclePool<VObjectArray>;

VObjectArray::VObjectArray(VClass* cls, long initialCapacity) : Registered(cls, initialCapacity, false) {
}

VObjectArray::~VObjectArray() = default;

// The pool

void VObjectArray::InitializeClass() {
    ArrayPool::Create(ms_recycledArrays, kPoolCapacity);
}

void VObjectArray::UninitializeClass() {
    ReleaseRecycledArrays();
}

void VObjectArray::ReleaseRecycledArrays() {
    ArrayPool::Destroy(ms_recycledArrays);
}

void VObjectArray::SetRecyclingEnabled(bool enabled) noexcept {
    ms_bRecyclingEnabled.store(enabled, std::memory_order_relaxed);
}

VObjectArray* VObjectArray::NewObjectArray() {
    if (ms_bRecyclingEnabled.load(std::memory_order_relaxed)) {
        if (VObjectArray* const array = ArrayPool::Pop(ms_recycledArrays, &VObjectArray::m_bRecycled)) {
            return array;
        }
    }
    return new VObjectArray(nullptr, 0);
}

std::type_info const& VObjectArray::PooledType() const noexcept {
    return typeid(VObjectArray);
}

/// True for the last reference to an array of exactly this type: `NewObjectArray` must not hand out one of a
/// derived type.
bool VObjectArray::MayBeRecycled() const noexcept {
    return !m_bRecycled && ms_recycledArrays && ms_bRecyclingEnabled.load(std::memory_order_relaxed) &&
           RetainCount() == 1 && Class() == LoadClassSlot(ms_theClass) && typeid(*this) == PooledType();
}

void VObjectArray::Release() const {
    if (MayBeRecycled()) {
        auto* const array = const_cast<VObjectArray*>(this);
        try {
            array->RemoveAllObjects();
        } catch (...) {
            VObject::Release(); // the exception is an element's
            throw;
        }
        array->SetGrowSize(kDefaultGrowSize);
        // An element's destructor may have kept a reference to the array.
        if (RetainCount() == 1 && ArrayPool::Push(ms_recycledArrays, this, &VObjectArray::m_bRecycled)) {
            return;
        }
    }
    VObject::Release();
}

// Copies

VObjectArray* VObjectArray::Copy() const {
    auto copy = VObjectRef<VObjectArray>::Adopt(NewObjectArray());
    copy->CopyContents(*this);
    return copy.Detach();
}

VObjectArray* VObjectArray::DeepCopy() const {
    auto copy = VObjectRef<VObjectArray>::Adopt(NewObjectArray());
    copy->DeepCopyContents(*this);
    return copy.Detach();
}

void VObjectArray::CopyContents(VObjectArray const& other) {
    if (&other == this) {
        return;
    }
    auto const alive = KeepAlive(*this);
    Snapshot const elements(other); // which may be an element of this array
    RemoveAllObjects();
    for (VObject const* const element : elements) {
        AddObject(element);
    }
}

void VObjectArray::DeepCopyContents(VObjectArray const& other) {
    auto const alive = KeepAlive(*this);
    Snapshot const elements(other);
    VCriticalSectionScope const scope(CriticalSection());
    RemoveAllObjects();
    for (VObject const* const element : elements) {
        auto const copy = VObjectRef<VObject>::Adopt(element ? element->Copy() : nullptr);
        AddObject(copy.Get());
    }
}

// Queries

VClass* VObjectArray::ClassOfContents() const {
    VClass* common = nullptr;
    for (long i = 0; i < Count(); ++i) {
        VObject const* const element = ObjectAtIndex(i);
        if (!element || (common && element->Class() != common)) {
            return nullptr;
        }
        common = element->Class();
    }
    return common;
}

long VObjectArray::IndexOfEquivalentObject(VObject const* object) const {
    auto const alive = KeepAlive(*this);
    for (long i = 0; object && i < Count(); ++i) {
        VObjectRef<VObject const> const element(ObjectAtIndex(i)); // over the comparison, which may remove it
        if (element && element->IsEqual(*object)) {
            return i;
        }
    }
    return -1;
}

namespace {

/// The arrays that this thread is describing, innermost first.
struct Described {
    VObjectArray const* array;
    Described const* outer;
    int depth;
};
constinit thread_local Described const* s_described = nullptr;

/// Whether a description is to end here: the array is being described, or stands too deep for the stack.
bool IsEndOfDescription(VObjectArray const* array) noexcept {
    Described const* entry = s_described;
    bool const isDeep = entry && entry->depth == detail::SlotBlock::kMaxDepth;
    while (entry && entry->array != array) {
        entry = entry->outer;
    }
    return isDeep || entry;
}

} // namespace

void VObjectArray::GetDescription(VString& out) const {
    out.Format("[%s] items: %i", ClassName(), narrow_cast<int>(Count()));
    if (IsEndOfDescription(this)) {
        return;
    }
    struct Scope {
        explicit Scope(VObjectArray const* array)
            : entry{array, s_described, s_described ? s_described->depth + 1 : 1} {
            s_described = &entry;
        }
        ~Scope() { s_described = entry.outer; }
        Described const entry;
    } const scope(this);
    for (VObject const* const element : Snapshot(*this)) {
        out << "\n  ";
        if (element) {
            out << *element;
        } else {
            out << "[NULL]";
        }
    }
}

void VObjectArray::SortWithComparisonFn(int (*compare)(VObject const**, VObject const**)) {
    auto const alive = KeepAlive(*this);
    VCriticalSectionScope scope;
    VObject** const objects = GetObjectsMutable(scope);
    long const count = Count();
    auto const isThere = [this, objects, count] {
        return GetObjectsMutable() == objects && Count() == count;
    };
    SortSlots(objects, count, compare, isThere);
}

// What the typed arrays add

bool VObjectArray::AddObjectIfAbsent(VObject const* object) {
    VCriticalSectionScope const scope(CriticalSection());
    return !ContainsObject(object) && AddObject(object);
}

void VObjectArray::AddObjectsIfAbsent(VObjectArray const* other) {
    if (!other) {
        return;
    }
    for (VObject const* const object : Snapshot(*other)) {
        AddObjectIfAbsent(object);
    }
}

} // namespace VFoundation
