#include "foundation/containers/VPtrArray.h"

#include "foundation/containers/internal/KeepAlive.h"
#include "foundation/containers/internal/SortSlots.h"
#include "foundation/core/NarrowCast.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace VFoundation {

VClass* VPtrArray::ms_theClass = nullptr;

VPtrArray::~VPtrArray() {
    FreeMem();
}

bool VPtrArray::ExpandArray() {
    constexpr std::size_t kMost = std::numeric_limits<std::int32_t>::max();
    std::size_t const needed = static_cast<std::size_t>(m_nAllocated) + static_cast<std::size_t>(m_nGrowSize);
    if (needed > kMost || !m_block.Grow(needed * sizeof(void*))) {
        return false;
    }
    m_ppPtrs = reinterpret_cast<void**>(m_block.Bytes());
    m_nAllocated = narrow_cast<std::int32_t>(std::min(m_block.Size() / sizeof(void*), kMost));
    return true;
}

long VPtrArray::IndexOf(void const* ptr) const noexcept {
    void** const end = m_ppPtrs + m_nCount;
    void** const found = std::find(m_ppPtrs, end, ptr);
    return found == end ? -1 : found - m_ppPtrs;
}

bool VPtrArray::RemovePtr(void* ptr) {
    long const index = IndexOf(ptr);
    return index >= 0 && RemovePtrAtIndex(index);
}

bool VPtrArray::RemovePtrAtIndex(long index) {
    if (index < 0 || index >= m_nCount) {
        return false;
    }
    void* const removed = m_ppPtrs[index];
    std::copy(m_ppPtrs + index + 1, m_ppPtrs + m_nCount, m_ppPtrs + index);
    m_ppPtrs[--m_nCount] = nullptr;
    if (m_bOwnsPtrs) {
        ::operator delete(removed);
    }
    return true;
}

void VPtrArray::FreeMem() {
    if (m_bOwnsPtrs) {
        for (std::int32_t i = 0; i < m_nCount; ++i) {
            ::operator delete[](m_ppPtrs[i]);
        }
    }
    m_block.Free();
    m_ppPtrs = nullptr;
    m_nCount = 0;
    m_nAllocated = 0;
}

void VPtrArray::SortWithComparisonFn(int (*compare)(void const**, void const**)) {
    auto const alive = KeepAlive(*this);
    auto const isThere = [this, slots = m_ppPtrs, count = m_nCount] {
        return m_ppPtrs == slots && m_nCount == count;
    };
    SortSlots(m_ppPtrs, m_nCount, compare, isThere);
}

} // namespace VFoundation
