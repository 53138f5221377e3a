#pragma once

#include "foundation/containers/VObjectArray.h"
#include "foundation/core/Export.h"

namespace VFoundation {

/// A `VObjectArray` of `T`. It adds types, nothing else, and shares the base's class record.
///
/// DELIBERATE: `AddObjectTyped` keeps elements unique, `AddObject` does not; the typed one is false for an
/// object that is already there.
///
/// Ownership, threads: as `VObjectArray`.
template <class T>
class VFOUNDATION_API VObjectArrayTmpl : public VObjectArray {
  public:
    explicit VObjectArrayTmpl(long initialCapacity = 0) : VObjectArray(nullptr, initialCapacity) {}

    [[nodiscard]] static VObjectArrayTmpl* New() { return new VObjectArrayTmpl(0); }

    [[nodiscard]] VObjectArrayTmpl* DeepCopy() const override {
        auto copy = VObjectRef<VObjectArrayTmpl>::Adopt(new VObjectArrayTmpl(0));
        copy->DeepCopyContents(*this);
        return copy.Detach();
    }

    T* ObjectAtIndexTyped(long index) const { return static_cast<T*>(ObjectAtIndex(index)); }
    /// For a range-for over the elements as `T`.
    using Iterator = IndexIterator<VObjectArrayTmpl, &VObjectArrayTmpl::ObjectAtIndexTyped>;
    Iterator begin() const noexcept { return Iterator(*this); }
    /// False for an object that is already in the array.
    bool AddObjectTyped(T const* object) { return AddObjectIfAbsent(object); }
    void AddObjectsTyped(VObjectArrayTmpl const* other) { AddObjectsIfAbsent(other); }
    long IndexOfEquivalentObjectTyped(T const* object) const { return IndexOfEquivalentObject(object); }
    bool RemoveObjectTyped(T const* object) { return RemoveObject(object); }
    bool ReplaceObjectAtIndexTyped(T const* object, long index) {
        return ReplaceObjectAtIndex(object, index);
    }
    bool InsertObjectAtIndexTyped(T const* object, long index) { return InsertObjectAtIndex(object, index); }

  protected:
    VObjectArrayTmpl(VClass* cls, long initialCapacity) : VObjectArray(cls, initialCapacity) {}
    std::type_info const& PooledType() const noexcept override { return typeid(VObjectArrayTmpl); }
};

} // namespace VFoundation
