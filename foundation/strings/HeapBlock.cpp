#include "foundation/strings/HeapBlock.h"

#include <algorithm>
#include <cstdlib>

namespace VFoundation {

static_assert(alignof(std::max_align_t) >= HeapBlock::kAlignment, "malloc would not align the bytes");

bool HeapBlock::GrowBlock(std::size_t needed) noexcept {
    std::size_t size = std::max(needed, m_size + m_size / 2);
    void* bytes = std::realloc(m_bytes, size);
    if (!bytes && size != needed) {
        size = needed; // memory is short: do without the room for growth
        bytes = std::realloc(m_bytes, size);
    }
    if (!bytes) {
        return false;
    }
    m_bytes = static_cast<char*>(bytes);
    m_size = size;
    return true;
}

bool HeapBlock::Replace(std::size_t needed) noexcept {
    void* const bytes = std::malloc(needed);
    if (!bytes) {
        return false;
    }
    std::free(m_bytes);
    m_bytes = static_cast<char*>(bytes);
    m_size = needed;
    return true;
}

void HeapBlock::Trim(std::size_t needed) noexcept {
    if (needed <= m_size / 2) {
        if (void* const bytes = std::realloc(m_bytes, needed)) {
            m_bytes = static_cast<char*>(bytes);
            m_size = needed;
        }
    }
}

void HeapBlock::FreeBlock() noexcept {
    std::free(std::exchange(m_bytes, nullptr));
    m_size = 0;
}

} // namespace VFoundation
