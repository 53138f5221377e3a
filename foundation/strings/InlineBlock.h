#pragma once

#include "foundation/core/Export.h"
#include "foundation/strings/HeapBlock.h"

#include <cstddef>
#include <cstring>

namespace VFoundation {

/// A `HeapBlock` with the first `Room` bytes in the object itself, so that short contents need no memory of their own.
/// Installed because `VString` holds one by value; use that.
///
/// The block starts empty. It is empty again after `Free`.
///
/// Ownership: owns its memory.
/// Threads: one thread at a time.
template <std::size_t Room>
class VFOUNDATION_API InlineBlock {
  public:
    InlineBlock() noexcept = default;
    InlineBlock(InlineBlock const&) = delete;
    InlineBlock& operator=(InlineBlock const&) = delete;
    ~InlineBlock() = default;

    /// Null when the block is empty.
    char* Bytes() const noexcept { return m_bytes; }
    /// Usable bytes.
    std::size_t Size() const noexcept { return m_bytes == m_room ? Room : m_heap.Size(); }
    bool IsInline() const noexcept { return m_bytes == m_room; }

    /// Makes room for at least `needed` bytes and keeps the contents. False, with the block as it was, when memory
    /// runs out.
    bool Grow(std::size_t needed) noexcept {
        if (m_bytes && needed <= Size()) {
            return true;
        }
        if (!m_bytes && needed <= Room) {
            m_bytes = m_room;
            return true;
        }
        if (!m_heap.Grow(needed)) {
            return false;
        }
        if (m_bytes == m_room) {
            std::memcpy(m_heap.Bytes(), m_room, Room);
        }
        m_bytes = m_heap.Bytes();
        return true;
    }
    /// Makes room for at least `needed` bytes (more than 0); the old contents are lost. False, with the block as it
    /// was, when memory runs out.
    bool Replace(std::size_t needed) noexcept {
        if (needed <= Room) {
            m_heap.Free();
            m_bytes = m_room;
            return true;
        }
        if (!m_heap.Replace(needed)) {
            return false;
        }
        m_bytes = m_heap.Bytes();
        return true;
    }
    void Free() noexcept {
        m_heap.Free();
        m_bytes = nullptr;
    }
    /// Takes the memory of `other`, which must not be inline, in place of its own. `other` is empty then.
    void TakeHeap(InlineBlock& other) noexcept {
        m_heap.Swap(other.m_heap);
        m_bytes = m_heap.Bytes();
        other.Free();
    }

  private:
    char* m_bytes = nullptr; // m_room, or what m_heap holds
    HeapBlock m_heap;
    char m_room[Room];
};

} // namespace VFoundation
