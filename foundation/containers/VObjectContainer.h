#pragma once

#include "foundation/containers/IObjectContainer.h"
#include "foundation/containers/IndexIterator.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObject.h"
#include "foundation/core/VObjectRef.h"
#include "foundation/threads/VCriticalSectionScope.h"

#include <atomic>
#include <cstdint>

namespace VFoundation {

class VCriticalSection;

namespace detail {
struct ContainerAccess;
class SlotBlock;
} // namespace detail

/// An ordered collection of counted objects, null elements included, with an optional lock of its own.
/// Without a lock use `VObjectArray`, which is recycled and can do more.
///
/// The capacity that the container reports grows by its grow size (32), never by doubling; the memory behind
/// it grows geometrically, so that appending stays cheap.
///
/// Index errors are a false or null result; removal and replacement also trace a warning. A failure to
/// allocate throws a `VException` of id 1 out of whatever had to grow; the container is unchanged then.
///
/// Operations call each other through the virtual table: an override takes effect everywhere. The pairs with
/// and without lock do not call each other.
///
/// DELIBERATE: `a == b` asks whether every element of `b` is in `a`; counts are not compared, so equality is
/// not symmetric, and a container that holds a null equals only itself.
/// DELIBERATE: `RemoveObject` takes out the last occurrence; `IndexOfObject` finds the first.
/// DELIBERATE: `ReplaceObjectAtIndex` releases the old element before it retains the new one; replacing an
/// element by itself while the container holds its only reference destroys it.
///
/// Elements leave before they are released: a destructor that runs in an operation finds the container without them,
/// may use it, and may release its last reference. While `RemoveAllObjects` releases elements the container has no
/// capacity; it is back afterwards. Elements that destructors add meanwhile are removed as well. Elements are released
/// in order of their indexes; containers nested deeper than 1 000 levels are released without recursion.
///
/// Operations that walk another container take its elements under its lock and work on these; it may be changed
/// meanwhile, or be this container.
///
/// Ownership: retains every element once for each place it stands in.
/// Threads: with a lock, operations may be called by any thread; those named `...Unsafe` and
/// `...NonThreadSafe`, `Count`, and `GetObjects` without a scope, never lock. A borrowed element or slot array is
/// safe only while its holder keeps the lock: use `Locked()` or a `GetObjects` that takes a scope. Elements are
/// released with the lock held; where a destructor has to wait for the lock of another container, it is free
/// meanwhile, unless a scope of the caller's holds it too. Without a lock, one thread at a time.
class VFOUNDATION_API VObjectContainer : public Registered<VObjectContainer, VObject>,
                                         public IObjectContainer {
  public:
    static constexpr char const* kClassName = "VObjectContainer";
    static VClass* ms_theClass;
    static constexpr std::int32_t kDefaultGrowSize = 32;

    /// Allocates `initialCapacity` slots, none when it is 0 or less; makes a lock when `threadSafe` is true.
    explicit VObjectContainer(VClass* cls = nullptr, long initialCapacity = 0, bool threadSafe = false);
    ~VObjectContainer() override;
    VObjectContainer& operator=(VObjectContainer const&) = delete;

    /// Empty, without lock.
    [[nodiscard]] static VObjectContainer* New() { return new VObjectContainer(nullptr, 0, false); }

    /// A new container without lock (owned): same elements, same grow size.
    [[nodiscard]] VObjectContainer* Copy() const override;
    /// True when `other` has the same class and `*this == other`.
    bool IsEqual(VObject const& other) const override;

    /// Removes all elements and gives back the memory.
    virtual void FreeMem();
    /// Empties the container and allocates one grow step.
    virtual void Init();

    long Count() const override { return m_nCount.load(std::memory_order_relaxed); }
    VObject* ObjectAtIndex(long index) const override;

    bool AddObject(VObject const* object) override;
    virtual bool AddObjectNonThreadSafe(VObject const* object);
    /// Appends the elements that `other` holds on entry, which may be this container. True when all were
    /// added and when `other` is null.
    virtual bool AddObjects(VObjectContainer const* other);

    virtual bool RemoveObject(VObject const* object);
    virtual bool RemoveObjectUnsafe(VObject const* object);
    /// Keeps the memory. An empty container is left alone without entering its lock.
    virtual void RemoveAllObjects();
    virtual void RemoveAllObjectsUnsafe();
    virtual bool RemoveObjectAtIndex(long index);
    virtual bool RemoveObjectAtIndexUnsafe(long index);
    /// One `RemoveObject` for each element of `other`, which may be this container; null removes nothing.
    virtual void RemoveObjects(VObjectContainer const* other);

    /// Appends when `index` is the count. False, too, when the old element's destructor moved other elements to
    /// `index`.
    virtual bool ReplaceObjectAtIndex(VObject const* object, long index);
    /// Moves the elements from `index` on one place up; `index` may be the count.
    virtual bool InsertObjectAtIndex(VObject const* object, long index);
    virtual bool SwapObjectsAtIndicies(long a, long b);
    /// The same as `SwapObjectsAtIndicies`.
    virtual bool SwapObjectsAtIndexes(long a, long b);

    /// A new container without lock (owned) of each element's `Copy()`.
    [[nodiscard]] virtual VObjectContainer* DeepCopy() const;

    /// The slots, `AllocatedCapacity()` of them, null from the count on; valid until the container grows.
    virtual VObject** GetObjectsMutable() const;
    virtual VObject* const* GetObjects() const;
    /// Enters the lock into `scope` first, so that the slots stay valid until the scope ends.
    virtual VObject** GetObjectsMutable(VCriticalSectionScope& scope) const;
    virtual VObject* const* GetObjects(VCriticalSectionScope& scope) const;

    /// Identity, not equality; null is never found.
    virtual bool ContainsObject(VObject const* object) const;
    /// The first place that holds `object`; -1 when it is null or absent.
    virtual long IndexOfObject(VObject const* object) const;

    /// Slots added at each growth from now on. With 0 or less a full container cannot grow.
    virtual void SetGrowSize(long slots);
    virtual long GetGrowSize() const;
    virtual long AllocatedCapacity() const;

    virtual bool operator==(VObjectContainer const& other) const;
    virtual bool operator!=(VObjectContainer const& other) const;

    /// The lock (borrowed) or null.
    VCriticalSection* CriticalSection() const noexcept { return m_pCriticalSection.Get(); }

    /// For a range-for over the elements (borrowed), nulls included. With a lock, each step takes it for itself; use
    /// `Locked()` where other threads change the container.
    using Iterator = IndexIterator<VObjectContainer, &VObjectContainer::ObjectAtIndex>;
    Iterator begin() const noexcept { return Iterator(*this); }
    static std::default_sentinel_t end() noexcept { return {}; }

    /// The elements with the lock held for the whole loop, so that they stay:
    ///
    ///     for (VObject* const object : container->Locked()) { ... }
    class LockedRange;
    [[nodiscard]] LockedRange Locked() const;

  protected:
    /// Sets the number of slots. Elements beyond it are released. False, and nothing changed, when `slots` is
    /// 0, negative or beyond what a block can hold.
    bool AllocateArray(long slots);
    /// Enters the lock, if there is one.
    void EnterLock(VCriticalSectionScope& scope) const;

  private:
    friend struct detail::ContainerAccess;

    bool MakeRoomAndRetain(VObject const* object);
    bool Append(VObject const* object);
    bool MakeRoom() {
        return static_cast<std::uint32_t>(m_nCount.load(std::memory_order_relaxed)) <
                   static_cast<std::uint32_t>(m_nAllocated) ||
               Grow();
    }
    bool Grow();
    bool RemoveAt(long index);
    void ReleaseElements();
    long LastIndexOf(VObject const* object) const noexcept;
    bool AllocateArrayUnsafe(long slots);
    void SetStorage(long slots);
    void Shrink(long slots);
    VObjectRef<detail::SlotBlock> ExchangeStorage(VObjectRef<detail::SlotBlock> storage, long count) noexcept;
    void SwapSlots(VObjectContainer& other) noexcept;
    void SetCount(long count) noexcept {
        m_nCount.store(static_cast<std::int32_t>(count), std::memory_order_relaxed);
    }

    std::int32_t m_nAllocated = 0;
    std::int32_t m_nGrowSize = kDefaultGrowSize;
    VObjectRef<detail::SlotBlock> m_pStorage; // m_nAllocated slots
    std::atomic<std::int32_t> m_nCount{0};    // relaxed: elements are read under the lock
    VObject** m_pObjects = nullptr;
    VObjectRef<VCriticalSection> m_pCriticalSection;
};

/// What `VObjectContainer::Locked` returns: holds the lock, if the container has one, as long as it lives.
///
/// Ownership: borrows the container.
/// Threads: the thread that made it.
class VObjectContainer::LockedRange {
  public:
    explicit LockedRange(VObjectContainer const& container)
        : m_scope(container.CriticalSection()), m_container(container) {}

    Iterator begin() const noexcept { return m_container.begin(); }
    static std::default_sentinel_t end() noexcept { return {}; }

  private:
    VCriticalSectionScope const m_scope;
    VObjectContainer const& m_container;
};

inline VObjectContainer::LockedRange VObjectContainer::Locked() const {
    return LockedRange(*this);
}

} // namespace VFoundation
