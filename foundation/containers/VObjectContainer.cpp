#include "foundation/containers/VObjectContainer.h"

#include "foundation/containers/internal/ContainerLock.h"
#include "foundation/containers/internal/KeepAlive.h"
#include "foundation/containers/internal/SlotBlock.h"
#include "foundation/containers/internal/Snapshot.h"
#include "foundation/core/NarrowCast.h"
#include "foundation/log/VLog.h"
#include "foundation/threads/VCriticalSection.h"
#include "foundation/threads/VCriticalSectionScope.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace VFoundation {

VClass* VObjectContainer::ms_theClass = nullptr;

using detail::SlotBlock;

VObjectContainer::VObjectContainer(VClass* cls, long initialCapacity, bool threadSafe) : Registered(cls) {
    if (threadSafe) {
        m_pCriticalSection.Allocate();
    }
    if (initialCapacity != 0) {
        AllocateArray(initialCapacity);
    }
}

VObjectContainer::~VObjectContainer() {
    try {
        VObjectContainer::FreeMem();
    } catch (...) { // an element's; all are released
    }
}

void VObjectContainer::EnterLock(VCriticalSectionScope& scope) const {
    scope.SetAndEnter(m_pCriticalSection.Get());
}

// Storage

bool VObjectContainer::AllocateArray(long slots) {
    ContainerLock const lock(m_pCriticalSection.Get());
    return AllocateArrayUnsafe(slots);
}

bool VObjectContainer::AllocateArrayUnsafe(long slots) {
    if (slots == m_nAllocated) {
        return true;
    }
    if (slots <= 0 || static_cast<unsigned long>(slots) > VData::kMaxLength / sizeof(void*)) {
        return false;
    }
    if (slots < m_nCount) {
        Shrink(slots);
    } else {
        SetStorage(slots);
    }
    return true;
}

void VObjectContainer::SetStorage(long slots) {
    if (m_pStorage) {
        m_pStorage->SetCapacity(slots);
    } else {
        m_pStorage = SlotBlock::OfCapacity(slots, *this);
    }
    m_pObjects = m_pStorage->Slots();
    m_nAllocated = narrow_cast<std::int32_t>(slots);
}

void VObjectContainer::Shrink(long slots) {
    auto kept = SlotBlock::OfCapacity(slots, *this);
    std::copy(m_pObjects, m_pObjects + slots, kept->Slots());
    long const count = m_nCount;
    auto former = ExchangeStorage(std::move(kept), slots);
    ContainerLock::Releasing const releasing(m_pCriticalSection.Get());
    SlotBlock::ReleaseElements(former, slots, count);
}

/// Takes a block with that many elements, or none, in place of the own one, which it returns.
VObjectRef<SlotBlock> VObjectContainer::ExchangeStorage(VObjectRef<SlotBlock> storage, long count) noexcept {
    std::swap(m_pStorage, storage);
    m_pObjects = m_pStorage ? m_pStorage->Slots() : nullptr;
    m_nAllocated = m_pStorage ? narrow_cast<std::int32_t>(m_pStorage->Capacity()) : 0;
    SetCount(count);
    return storage;
}

void VObjectContainer::SwapSlots(VObjectContainer& other) noexcept {
    long const count = m_nCount;
    long const otherCount = other.m_nCount;
    other.ExchangeStorage(ExchangeStorage(std::move(other.m_pStorage), otherCount), count);
}

bool VObjectContainer::Grow() {
    return m_nGrowSize > 0 && AllocateArrayUnsafe(long{m_nCount} + m_nGrowSize);
}

void VObjectContainer::FreeMem() {
    ContainerLock const lock(m_pCriticalSection.Get());
    if (!m_pStorage) {
        return;
    }
    auto const alive = KeepAlive(*this);
    RemoveAllObjects();
    ReleaseElements(); // what an override left
    ExchangeStorage({}, 0);
}

void VObjectContainer::Init() {
    auto const alive = KeepAlive(*this);
    FreeMem();
    AllocateArray(long{m_nAllocated} + m_nGrowSize);
}

void VObjectContainer::SetGrowSize(long slots) {
    constexpr long kLargest = std::numeric_limits<std::int32_t>::max();
    ContainerLock const lock(m_pCriticalSection.Get());
    m_nGrowSize = narrow_cast<std::int32_t>(std::clamp(slots, -kLargest, kLargest));
}

long VObjectContainer::GetGrowSize() const {
    ContainerLock const lock(m_pCriticalSection.Get());
    return m_nGrowSize;
}

long VObjectContainer::AllocatedCapacity() const {
    ContainerLock const lock(m_pCriticalSection.Get());
    return m_nAllocated;
}

// Access

VObject* VObjectContainer::ObjectAtIndex(long index) const {
    ContainerLock const lock(m_pCriticalSection.Get());
    return index >= 0 && index < m_nCount ? m_pObjects[index] : nullptr;
}

VObject** VObjectContainer::GetObjectsMutable() const {
    return m_pObjects;
}

VObject* const* VObjectContainer::GetObjects() const {
    return m_pObjects;
}

VObject** VObjectContainer::GetObjectsMutable(VCriticalSectionScope& scope) const {
    EnterLock(scope);
    return m_pObjects;
}

VObject* const* VObjectContainer::GetObjects(VCriticalSectionScope& scope) const {
    EnterLock(scope);
    return m_pObjects;
}

bool VObjectContainer::ContainsObject(VObject const* object) const {
    return IndexOfObject(object) >= 0;
}

long VObjectContainer::IndexOfObject(VObject const* object) const {
    if (!object) {
        return -1;
    }
    ContainerLock const lock(m_pCriticalSection.Get());
    VObject** const end = m_pObjects + m_nCount;
    VObject** const found = std::find(m_pObjects, end, object);
    return found == end ? -1 : found - m_pObjects;
}

long VObjectContainer::LastIndexOf(VObject const* object) const noexcept {
    long index = m_nCount - 1;
    while (index >= 0 && m_pObjects[index] != object) {
        --index;
    }
    return index;
}

// Adding

/// Room for one more element, and a reference to it. Retaining may run code of the element's class, which may throw or
/// use the container: nothing is stored before it.
inline bool VObjectContainer::MakeRoomAndRetain(VObject const* object) {
    if (!MakeRoom()) {
        return false;
    }
    VObjectRef<VObject const> added(object);
    if (!MakeRoom()) {
        return false;
    }
    (void)added.Detach();
    return true;
}

inline bool VObjectContainer::Append(VObject const* object) {
    if (!MakeRoomAndRetain(object)) {
        return false;
    }
    std::int32_t const count = m_nCount.load(std::memory_order_relaxed);
    m_pObjects[count] = const_cast<VObject*>(object);
    SetCount(count + 1);
    return true;
}

bool VObjectContainer::AddObject(VObject const* object) {
    ContainerLock const lock(m_pCriticalSection.Get());
    return Append(object);
}

bool VObjectContainer::AddObjectNonThreadSafe(VObject const* object) {
    return Append(object);
}

bool VObjectContainer::AddObjects(VObjectContainer const* other) {
    if (!other) {
        return true;
    }
    for (VObject const* const object : Snapshot(*other)) {
        if (!AddObject(object)) {
            return false;
        }
    }
    return true;
}

bool VObjectContainer::InsertObjectAtIndex(VObject const* object, long index) {
    ContainerLock const lock(m_pCriticalSection.Get());
    if (index < 0 || index > m_nCount || !MakeRoomAndRetain(object)) {
        return false;
    }
    index = std::min<long>(index, m_nCount);
    VObject** const end = m_pObjects + m_nCount;
    std::copy_backward(m_pObjects + index, end, end + 1);
    m_pObjects[index] = const_cast<VObject*>(object);
    SetCount(m_nCount + 1);
    return true;
}

// Removing. An element is taken out before it is released: its destructor may use the container.

bool VObjectContainer::RemoveAt(long index) {
    if (index >= m_nCount) {
        VLog::TraceDebug("VObjectContainer::RemoveObjectAtIndex - Warn: liIndex (%i) > numObjects (%i)\n",
                         narrow_cast<int>(index), narrow_cast<int>(m_nCount.load()));
        return false;
    }
    if (index < 0) {
        VLog::TraceDebug("VObjectContainer::RemoveObjectAtIndex - Warn: liIndex (%i) < 0\n",
                         narrow_cast<int>(index));
        return false;
    }
    VObject const* const removed = m_pObjects[index];
    long const last = m_nCount - 1;
    std::copy(m_pObjects + index + 1, m_pObjects + last + 1, m_pObjects + index);
    m_pObjects[last] = nullptr;
    SetCount(last);
    if (removed) {
        ContainerLock::Releasing const releasing(m_pCriticalSection.Get());
        removed->Release();
    }
    return true;
}

/// Gives up the slots with all elements, releases these, and takes the slots back. The elements' destructors may have
/// filled new ones.
void VObjectContainer::ReleaseElements() {
    auto const alive = KeepAlive(*this);
    while (m_nCount > 0) {
        long const count = m_nCount;
        auto leaving = ExchangeStorage({}, 0);
        {
            ContainerLock::Releasing const releasing(m_pCriticalSection.Get());
            SlotBlock::ReleaseElements(leaving, 0, count);
        }
        if (leaving && leaving->Capacity() > m_nAllocated) {
            std::copy(m_pObjects, m_pObjects + m_nCount, leaving->Slots());
            ExchangeStorage(std::move(leaving), m_nCount);
        }
    }
}

bool VObjectContainer::RemoveObjectAtIndex(long index) {
    ContainerLock const lock(m_pCriticalSection.Get());
    return RemoveAt(index);
}

bool VObjectContainer::RemoveObjectAtIndexUnsafe(long index) {
    return RemoveAt(index);
}

bool VObjectContainer::RemoveObject(VObject const* object) {
    ContainerLock const lock(m_pCriticalSection.Get());
    long const index = LastIndexOf(object);
    return index >= 0 && RemoveObjectAtIndex(index);
}

bool VObjectContainer::RemoveObjectUnsafe(VObject const* object) {
    long const index = LastIndexOf(object);
    return index >= 0 && RemoveObjectAtIndexUnsafe(index);
}

void VObjectContainer::RemoveObjects(VObjectContainer const* other) {
    if (other == this) {
        RemoveAllObjects();
    } else if (other) {
        for (VObject const* const object : Snapshot(*other)) {
            RemoveObject(object);
        }
    }
}

void VObjectContainer::RemoveAllObjects() {
    if (m_nCount == 0) {
        return;
    }
    ContainerLock const lock(m_pCriticalSection.Get());
    ReleaseElements();
}

void VObjectContainer::RemoveAllObjectsUnsafe() {
    ReleaseElements();
}

// Replacing and reordering

bool VObjectContainer::ReplaceObjectAtIndex(VObject const* object, long index) {
    ContainerLock const lock(m_pCriticalSection.Get());
    if (index == m_nCount) {
        return AddObject(object);
    }
    if (index < 0 || index > m_nCount) {
        VLog::TraceDebug("VObjectContainer::ReplaceObjectAtIndex - Warn: liIndex (%i) > numObjects (%i)\n",
                         narrow_cast<int>(index), narrow_cast<int>(m_nCount.load()));
        return false;
    }
    auto const alive = KeepAlive(*this);
    if (VObject const* const old = std::exchange(m_pObjects[index], nullptr)) {
        ContainerLock::Releasing const releasing(m_pCriticalSection.Get());
        old->Release();
    }
    // Either call may have rearranged the container: the old element's destructor, or the new one's `Retain`.
    auto const isMyPlace = [this, index] { return index < m_nCount && !m_pObjects[index]; };
    if (!isMyPlace()) {
        return false;
    }
    VObjectRef<VObject> added(const_cast<VObject*>(object));
    if (!isMyPlace()) {
        return false;
    }
    m_pObjects[index] = added.Detach();
    return true;
}

bool VObjectContainer::SwapObjectsAtIndicies(long a, long b) {
    ContainerLock const lock(m_pCriticalSection.Get());
    if (a < 0 || b < 0 || a >= m_nCount || b >= m_nCount) {
        return false;
    }
    std::swap(m_pObjects[a], m_pObjects[b]);
    return true;
}

bool VObjectContainer::SwapObjectsAtIndexes(long a, long b) {
    return SwapObjectsAtIndicies(a, b);
}

// Comparison and copies

bool VObjectContainer::operator==(VObjectContainer const& other) const {
    if (&other == this) {
        return true;
    }
    VCriticalSectionScope scope;
    VCriticalSectionScope otherScope;
    EnterLock(scope);
    // Another thread may be comparing the two the other way round: one of both has to step back.
    while (!otherScope.TryEnter(other.m_pCriticalSection.Get(), 1)) {
        scope.SetAndEnter(nullptr);
        EnterLock(scope);
    }
    for (long i = 0; i < other.Count(); ++i) {
        if (!ContainsObject(other.ObjectAtIndex(i))) {
            return false;
        }
    }
    return true;
}

bool VObjectContainer::operator!=(VObjectContainer const& other) const {
    return !(*this == other);
}

bool VObjectContainer::IsEqual(VObject const& other) const {
    return other.Class() == Class() && *this == static_cast<VObjectContainer const&>(other);
}

VObjectContainer* VObjectContainer::Copy() const {
    auto copy = VObjectRef<VObjectContainer>::Adopt(new VObjectContainer(nullptr, 0, false));
    long const growSize = GetGrowSize();
    copy->SetGrowSize(std::max(growSize, 1L));
    copy->AddObjects(this);
    copy->SetGrowSize(growSize);
    return copy.Detach();
}

VObjectContainer* VObjectContainer::DeepCopy() const {
    auto copy = VObjectRef<VObjectContainer>::Adopt(new VObjectContainer(nullptr, 0, false));
    for (VObject const* const element : Snapshot(*this)) {
        auto const elementCopy = VObjectRef<VObject>::Adopt(element ? element->Copy() : nullptr);
        copy->AddObject(elementCopy.Get());
    }
    return copy.Detach();
}

} // namespace VFoundation
