#pragma once

#include "foundation/containers/VObjectContainer.h"
#include "foundation/core/Export.h"

#include <atomic>
#include <typeinfo>

namespace VFoundation {

template <class T>
class VObjectRingBufferTmpl;

namespace detail {

/// Puts the class record of what derives from it directly below `VObject`'s, not below that of the C++ base.
template <class Base>
class VFOUNDATION_API RecordBelowVObject : public Base {
  public:
    static VClass* TheClass() { return VObject::TheClass(); }

  protected:
    using Base::Base;
};

} // namespace detail

/// The library's everyday list of counted objects; `VObjectArrayTmpl<T>` adds types to it.
///
///     auto const names = MakeObject<VObjectArray>();
///
/// Arrays are recycled: the last `Release` empties an array and puts it into a pool, from which
/// `NewObjectArray` takes it again with its capacity. Only arrays of exactly this class, or of
/// `VObjectArrayTmpl`, with this class's own record are pooled. An array embedded in another object or on the
/// stack dies with its place: it must not be released.
///
/// DELIBERATE: the class record's parent is `VObject`, not `VObjectContainer`; `IsKindOfClass` with the
/// container's record is false for an array.
///
/// Ownership: as `VObjectContainer`.
/// Threads: an array has no lock, so one thread at a time; the pool is safe from any thread.
class VFOUNDATION_API VObjectArray
    : public Registered<VObjectArray, detail::RecordBelowVObject<VObjectContainer>> {
  public:
    static constexpr char const* kClassName = "VObjectArray";
    static VClass* ms_theClass;
    static constexpr unsigned long kPoolCapacity = 8192;

    /// No slots when `initialCapacity` is 0 or less.
    explicit VObjectArray(VClass* cls = nullptr, long initialCapacity = 0);
    ~VObjectArray() override;
    VObjectArray& operator=(VObjectArray const&) = delete;

    /// An empty array (owned), from the pool if recycling is on and one waits there.
    [[nodiscard]] static VObjectArray* NewObjectArray();
    [[nodiscard]] static VObjectArray* New() { return NewObjectArray(); }

    /// Makes the pool.
    static void InitializeClass();
    static void UninitializeClass();
    static void ReleaseRecycledArrays();
    static void SetRecyclingEnabled(bool enabled) noexcept;

    void Release() const override;
    /// A new array (owned) of the same elements.
    [[nodiscard]] VObjectArray* Copy() const override;
    /// "[<class name>] items: <count>", then a line for each element. An array met inside itself, or 1 000 levels
    /// deep, shows its first line only.
    void GetDescription(VString& out) const override;
    /// Writes the attribute "count" and each element but nulls; holds what it reads in place of its elements.
    /// A child of no known class is traced and skipped; the count does not bound the reading. False when an
    /// element could not be written, as in an array that contains itself; closing the document is false then.
    bool SerializeAsXML(VXMLFile& file) override;
    /// A new array (owned) of each element's `Copy()`.
    [[nodiscard]] VObjectArray* DeepCopy() const override;

    /// Holds the elements of `other` instead of its own; an array keeps what it holds when copied to itself.
    virtual void CopyContents(VObjectArray const& other);
    /// Holds a `Copy()` of each element of `other` instead of its own elements. When one throws, the array holds the
    /// copies that were made before.
    virtual void DeepCopyContents(VObjectArray const& other);
    /// The class of all elements; null when there is none, one is null, or they differ.
    virtual VClass* ClassOfContents() const;
    /// The first element that says it `IsEqual` to `object`; -1 when there is none or `object` is null.
    virtual long IndexOfEquivalentObject(VObject const* object) const;

    /// Orders the array; `compare` gets the addresses of two elements, which may be null, and answers like
    /// `strcmp`. Equal elements keep their order. A comparison that throws or adds or removes elements ends the
    /// sorting; the array is partly sorted then, and complete.
    void SortWithComparisonFn(int (*compare)(VObject const**, VObject const**));

    static std::atomic<VObjectRingBufferTmpl<VObjectArray>*> ms_recycledArrays;
    static std::atomic<bool> ms_bRecyclingEnabled; // relaxed: a switch

  protected:
    /// The C++ type whose objects may be pooled; types derived from it are not.
    virtual std::type_info const& PooledType() const noexcept;
    /// `AddObject` unless the array already holds the object.
    bool AddObjectIfAbsent(VObject const* object);
    void AddObjectsIfAbsent(VObjectArray const* other);

  private:
    bool MayBeRecycled() const noexcept;

    bool m_bRecycled = false; // true while in the pool
};

} // namespace VFoundation
