#pragma once

#include "foundation/containers/VPtrArray.h"
#include "foundation/core/Export.h"

namespace VFoundation {

/// A `VPtrArray` of pointers to `T`. It adds types, nothing else, and shares the base's class record.
///
/// Ownership: as `VPtrArray`; an owning array frees raw memory and runs no destructor of `T`.
/// Threads: one at a time.
template <class T>
class VFOUNDATION_API VPtrArrayTmpl : public VPtrArray {
  public:
    explicit VPtrArrayTmpl(bool ownsPtrs = false) : VPtrArray(ownsPtrs) {}

    T* PtrAtIndex(long index) const noexcept { return static_cast<T*>(VPtrArray::PtrAtIndex(index)); }
    /// For a range-for over the pointers as `T*`.
    using Iterator = IndexIterator<VPtrArrayTmpl, &VPtrArrayTmpl::PtrAtIndex>;
    Iterator begin() const noexcept { return Iterator(*this); }
    bool IsPtrInArray(T const* ptr) const noexcept { return VPtrArray::IsPtrInArray(ptr); }
    bool AddPtr(T* ptr) { return VPtrArray::AddPtr(ptr); }
    bool RemovePtr(T* ptr) { return VPtrArray::RemovePtr(ptr); }
};

} // namespace VFoundation
