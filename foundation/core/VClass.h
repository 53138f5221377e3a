#pragma once

#include "foundation/core/Export.h"
#include "foundation/core/NarrowCast.h"
#include "foundation/core/VAtomicOp.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace VFoundation {

class VClass;
class VObject;
class VPtrArray;

/// An allocator that a class may install for its instances (`VClass::SetPool`). No class of the library does.
///
/// Ownership: adopted by the record it is installed in.
/// Threads: called on whichever thread creates an instance by name.
class VFOUNDATION_API IVInstancePool {
  public:
    virtual ~IVInstancePool() = default;
    /// A new instance, owned by the caller.
    [[nodiscard]] virtual VObject* NewInstance() = 0;
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
/// instances outlive that call: a record is never freed before the last instance of its class.
///
/// A class is ready once its `InitializeClass()` has run. Until then the thread that runs it has the class
/// already, and other threads wait in `TheClass()` for that one class. No lock of the library is held meanwhile.
/// A thread also gets a class that is not ready where waiting could not end: two threads would wait for each
/// other, or the thread is printing or ending the registry. What the hook throws leaves `TheClass()`, and the
/// next call runs the hook again.
///
/// DELIBERATE: `ClassForClassName` searches a half-open range and never finds the class that sorts last;
/// readers that must find it hold its record or map it with `SetClassSubstitution`.
/// DELIBERATE: `DestroyClassRegistry` does not visit the first entry; that record stays.
///
/// Ownership: the registry owns records; callers borrow them.
/// Threads: registration, look-up, dump and tear-down lock the registry. The counters are exact.
class VFOUNDATION_API VClass {
  public:
    using Factory = VObject* (*)();
    using Hook = void (*)();

    /// Copies `name`, stores the record in `*backPointer` (if given) and enters it in the registry.
    /// `name` may be null; `factory` is null for classes that cannot be created by name; either hook may be
    /// null. Throws `std::bad_alloc`, and no record is left, when memory runs out.
    VClass(char const* name, VClass* superClass, Factory factory, long version, Hook initialize,
           Hook uninitialize, unsigned long size, VClass** backPointer);
    VClass(VClass const&) = delete;
    VClass& operator=(VClass const&) = delete;
    /// Clears the class's slot and calls `UninitializeClass()`. Anything thrown by that leaves as a
    /// `VException`.
    // NOLINTNEXTLINE(bugprone-exception-escape)
    virtual ~VClass() noexcept(false);

    /// A new instance (owned): from the pool if one is set, else from the factory, else null.
    [[nodiscard]] VObject* NewInstance() const;
    void InitializeClass();
    void UninitializeClass();

    /// True when `other` is this class or one of its superclasses.
    bool IsSubClassOfClass(VClass const* other) const noexcept;

    /// Never null.
    char const* Name() const noexcept { return m_name ? m_name.get() : ""; }
    /// Instances ever constructed.
    long Created() const noexcept {
        return static_cast<std::int32_t>(m_instances.load(std::memory_order_relaxed) >> kCreatedShift);
    }
    /// Instances constructed and not yet destroyed. Those destroyed between the end of the library and its next
    /// start still count.
    long Existing() const noexcept { return Living() + m_goneUncounted.load(std::memory_order_relaxed); }
    long MaxSimultaneous() const noexcept { return m_maxSimultaneous; }
    /// The version that object XML carries; 1 unless set.
    long Version() const noexcept { return m_version.load(std::memory_order_relaxed); }
    void SetVersion(long version) noexcept {
        m_version.store(narrow_cast<std::int32_t>(version), std::memory_order_relaxed);
    }
    VClass* SuperClass() const noexcept { return m_superClass.load(std::memory_order_acquire); }
    /// Bytes of one instance.
    unsigned long Size() const noexcept { return m_size; }
    /// True when the class is set up and its record is in the registry.
    bool IsReady() const noexcept { return m_state.load(std::memory_order_acquire) == State::eReady; }

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
    [[nodiscard]] VPtrArray* SubClassesArray();

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

  private:
    friend class VObject;
    friend struct ClassRegistry;
    friend struct ClassStart;

    enum class State : std::uint8_t {
        eReady,
        eBeingMade, // in its slot, and not yet in the registry
        eUnstarted, // in the registry; the hook has not run, or has thrown
        eStarting,  // the hook is running
        eDetached   // outlived a registry, waits for its class's next `TheClass()`
    };

    // Both counters in one word, so that one addition keeps them: the instances created in the upper half, those
    // alive in the lower one, whose highest bit says that the class still has the record.
    static constexpr int kCreatedShift = 32;
    static constexpr std::uint64_t kBorn = (std::uint64_t{1} << kCreatedShift) + 1;
    static constexpr std::uint64_t kHeld = std::uint64_t{1} << 31;

    void InstanceBorn() noexcept { VAtomicOp::AddToCount(m_instances, kBorn); }
    /// True when the record was waiting for this instance, its last, to be freed.
    [[nodiscard]] bool InstanceGone() noexcept {
        return narrow_cast<std::uint32_t>(VAtomicOp::AddToCount(m_instances, ~std::uint64_t{0})) == 0;
    }
    /// As `InstanceGone`, without a change to `Existing()`.
    [[nodiscard]] bool InstanceGoneUncounted() noexcept {
        m_goneUncounted.fetch_add(1, std::memory_order_relaxed);
        return InstanceGone();
    }
    /// Instances that really exist, whether they count or not: the record must outlive them.
    long Living() const noexcept {
        return static_cast<long>(m_instances.load(std::memory_order_acquire) & (kHeld - 1));
    }

    std::int32_t m_marker = 1;
    IVInstancePool* m_pool = nullptr;
    std::unique_ptr<char[]> m_name;
    // relaxed: a number for people; acquire: whoever finds no instance may free what they used
    std::atomic<std::uint64_t> m_instances{kHeld};
    std::atomic<std::int32_t> m_goneUncounted{0}; // relaxed: a statistic
    std::int32_t m_maxSimultaneous = 0;
    std::atomic<std::int32_t> m_version; // relaxed: a number of its own
    std::atomic<VClass*> m_superClass;   // release and acquire: hand over the record
    VClass** m_backPointer;
    Factory m_factory;
    Hook m_initialize;
    Hook m_uninitialize;
    std::uint32_t m_size;
    // release and acquire: `eReady` hands over what the hook set up; relaxed under the lock that orders the writers
    std::atomic<State> m_state{State::eBeingMade};
    bool m_isUnstarted = false;     // a detached record was `eUnstarted`
    bool m_initializeAgain = false; // the next start of the library runs the hook
    bool m_isSetAside = false;
    // The mark of the thread that runs the hook (`ClassStart`); relaxed: a thread only looks for its own mark, or locks.
    std::atomic<void const*> m_starter{nullptr};
    VClass* m_nextKept = nullptr;
};

} // namespace VFoundation
