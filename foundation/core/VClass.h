#pragma once

#include "foundation/core/NarrowCast.h"

#include <atomic>
#include <cstdint>

namespace VFoundation {

class VClass;
class VObject;
class VPtrArray;

/// An allocator that a class may install for its instances (`VClass::SetPool`). No class of the library does.
///
/// Ownership: adopted by the record it is installed in.
/// Threads: called on whichever thread creates an instance by name.
class IVInstancePool {
  public:
    virtual ~IVInstancePool() = default;
    /// A new instance, owned by the caller.
    virtual VObject* NewInstance() = 0;
    virtual void InitializeClass() = 0;
    virtual void UninitializeClass() = 0;
    virtual long PoolSize() const = 0;
    virtual long MaxPoolSize() const = 0;
};

/// The run-time record of one class: name, superclass, factory, hooks and instance statistics. The process
/// keeps all records in one registry, through which objects are created by class name when they are read from
/// files.
///
/// Do not construct records by hand: derive from `Registered<Derived, Base>`, whose `TheClass()` does it. A
/// record lives from the first `TheClass()` of its class to `DestroyClassRegistry()`, and longer when
/// instances outlive that call: a record is never freed under a living object.
///
/// DELIBERATE: `ClassForClassName` searches a half-open range and never finds the class that sorts last;
/// readers that must find it hold its record or map it with `SetClassSubstitution`.
/// DELIBERATE: `DestroyClassRegistry` does not visit the first entry; that record stays.
///
/// Ownership: the registry owns records; callers borrow them.
/// Threads: registration, look-up, dump and tear-down lock the registry. The counters are statistics: relaxed
/// load, then store, so that updates may be lost but never race.
class VClass {
  public:
    using Factory = VObject* (*)();
    using Hook = void (*)();

    /// Copies `name`, stores the record in `*backPointer` (if given) and enters it in the registry.
    /// `factory` is null for classes that cannot be created by name; either hook may be null.
    VClass(char const* name, VClass* superClass, Factory factory, long version, Hook initialize,
           Hook uninitialize, unsigned long size, VClass** backPointer);
    VClass(VClass const&) = delete;
    VClass& operator=(VClass const&) = delete;
    /// Clears the class's slot and calls `UninitializeClass()`. Anything thrown by that leaves as a
    /// `VException`.
    // NOLINTNEXTLINE(bugprone-exception-escape)
    virtual ~VClass() noexcept(false);

    /// A new instance (owned): from the pool if one is set, else from the factory, else null.
    VObject* NewInstance() const;
    void InitializeClass();
    void UninitializeClass();

    /// True when `other` is this class or one of its superclasses.
    bool IsSubClassOfClass(VClass const* other) const noexcept;

    /// Never null.
    char const* Name() const noexcept { return m_name ? m_name : ""; }
    /// Instances ever constructed, instances alive now.
    long Created() const noexcept { return m_created.load(std::memory_order_relaxed); }
    long Existing() const noexcept { return m_existing.load(std::memory_order_relaxed); }
    long MaxSimultaneous() const noexcept { return m_maxSimultaneous; }
    /// The version that object XML carries; 1 unless set.
    long Version() const noexcept { return m_version; }
    void SetVersion(long version) noexcept { m_version = narrow_cast<std::int32_t>(version); }
    VClass* SuperClass() const noexcept { return m_superClass; }
    /// Bytes of one instance.
    unsigned long Size() const noexcept { return m_size; }

    IVInstancePool* Pool() const noexcept { return m_pool; }
    /// Adopts `pool` and deletes the one before it; null removes.
    void SetPool(IVInstancePool* pool);

    /// The registered class of exactly that name, or null; see the class comment for the one it cannot find.
    static VClass* ClassForClassName(char const* name);

    /// The record that files naming `oldName` are to use instead; null when none was set. The library sets
    /// none.
    static VClass* GetClassSubstitution(char const* oldName);
    /// Maps `oldName` to a record (borrowed) until the registry is destroyed; a null record removes the
    /// entry.
    static void SetClassSubstitution(char const* oldName, VClass* cls);

    /// Every registered record derived from this one, itself included. Owned by the caller; records borrowed.
    VPtrArray* SubClassesArray();

    /// Sorts the registry by name now instead of at the next look-up.
    static void SortClassArray();
    /// Orders two records by name, nulls last.
    static int SortFn_Name(void const** a, void const** b);

    /// Writes the statistics table to the default log: as a table or as comma-separated lines;
    /// with `onlyExisting` classes without living instances print no row but count in the totals.
    static void DumpClassDetails(bool onlyExisting, bool commaSeparated);

    /// Ends the registry: deletes every record without living instances. False when there was none.
    static bool DestroyClassRegistry();

    /// The record of `VClass` itself.
    static VClass* TheClass();

    // What the kernel needs of a record; not for clients.

    /// Counts one instance born or gone.
    void InstanceBorn() noexcept {
        Add(m_created, 1);
        Add(m_existing, 1);
    }
    void InstanceGone() noexcept { Add(m_existing, -1); }

    /// True for a record that outlived a registry and waits for its class's next `TheClass()`.
    bool IsDetached() const noexcept { return m_detached.load(std::memory_order_acquire); }
    /// Enters a detached record in the present registry again, below `superClass`.
    void Reattach(VClass* superClass);
    /// Runs `InitializeClass()` of a record that was kept over a shut-down; nothing for any other.
    void InitializeClassAgain();
    /// Marks every record alive so that `InitializeClassAgain` acts on it.
    static void MarkAllForInitialization();
    /// Deletes a record, or sets it aside until its last instance is gone; its slot is cleared either way.
    static void Retire(VClass* record);
    /// The record registered under exactly this name, the last one included; null if none.
    static VClass* FindRegistered(char const* name);

  private:
    static void Add(std::atomic<std::int32_t>& counter, std::int32_t delta) noexcept {
        counter.store(
            narrow_cast<std::int32_t>(counter.load(std::memory_order_relaxed) + std::int64_t{delta}),
            std::memory_order_relaxed);
    }
    friend struct ClassRegistry;

    std::int32_t m_marker = 1;
    IVInstancePool* m_pool = nullptr;
    char* m_name = nullptr;
    std::atomic<std::int32_t> m_created{0};
    std::atomic<std::int32_t> m_existing{0};
    std::int32_t m_maxSimultaneous = 0;
    std::int32_t m_version;
    VClass* m_superClass;
    VClass** m_backPointer;
    Factory m_factory;
    Hook m_initialize;
    Hook m_uninitialize;
    std::uint32_t m_size;
    std::atomic<bool> m_detached{false};
    bool m_initializeAgain = false;
    VClass* m_nextKept = nullptr;
};

} // namespace VFoundation
