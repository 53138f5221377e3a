#pragma once

#include "foundation/containers/IndexIterator.h"
#include "foundation/core/Export.h"
#include "foundation/core/Registered.h"
#include "foundation/core/VObject.h"
#include "foundation/strings/HeapBlock.h"

#include <cstdint>

namespace VFoundation {

/// An ordered list of raw pointers, nulls included. For counted objects use `VObjectArray`.
///
/// An owning array frees what it points to as raw memory: no destructor runs, so let it own only plain
/// blocks.
///
/// DELIBERATE: `RemovePtr` and `RemovePtrAtIndex` free an owned pointee with `::operator delete`, `FreeMem`
/// and the destructor with `::operator delete[]`; blocks that an array owns must come from an allocator that
/// takes either.
///
/// Ownership: borrows its pointers, or adopts them when made with `ownsPtrs`.
/// Threads: one at a time; no operation locks.
class VFOUNDATION_API VPtrArray : public Registered<VPtrArray, VObject> {
  public:
    static constexpr char const* kClassName = "VPtrArray";
    static VClass* ms_theClass;

    explicit VPtrArray(bool ownsPtrs = false) : VPtrArray(nullptr, ownsPtrs) {}
    ~VPtrArray() override;
    VPtrArray& operator=(VPtrArray const&) = delete;

    /// One that borrows.
    [[nodiscard]] static VPtrArray* New() { return new VPtrArray(false); }

    long Count() const noexcept { return m_nCount; }
    /// Null out of range.
    void* PtrAtIndex(long index) const noexcept {
        return index >= 0 && index < m_nCount ? m_ppPtrs[index] : nullptr;
    }
    /// For a range-for over the pointers.
    using Iterator = IndexIterator<VPtrArray, &VPtrArray::PtrAtIndex>;
    Iterator begin() const noexcept { return Iterator(*this); }
    static std::default_sentinel_t end() noexcept { return {}; }
    bool IsPtrInArray(void const* ptr) const noexcept { return IndexOf(ptr) >= 0; }

    /// Appends, a null too. False, and nothing changed, when memory runs out.
    bool AddPtr(void* ptr) {
        std::int32_t const count = m_nCount;
        if (count == m_nAllocated && !ExpandArray()) {
            return false;
        }
        m_ppPtrs[count] = ptr;
        m_nCount = count + 1;
        return true;
    }

    /// Removes the first occurrence; false when there is none.
    bool RemovePtr(void* ptr);
    /// False out of range.
    bool RemovePtrAtIndex(long index);
    /// Empties the array and gives back its memory.
    void FreeMem();

    /// Orders the array; `compare` gets the addresses of two entries and answers like `strcmp`. Equal entries keep
    /// their order. No memory is allocated.
    void SortWithComparisonFn(int (*compare)(void const**, void const**));

  protected:
    VPtrArray(VClass* cls, bool ownsPtrs) : Registered(cls), m_bOwnsPtrs(ownsPtrs) {}

  private:
    bool ExpandArray();
    long IndexOf(void const* ptr) const noexcept;

    void** m_ppPtrs = nullptr;
    std::int32_t m_nCount = 0;
    std::int32_t m_nAllocated = 0;
    std::int32_t m_nGrowSize = 32; // the least that the array grows by
    bool m_bOwnsPtrs;
    HeapBlock m_block;
};

} // namespace VFoundation
